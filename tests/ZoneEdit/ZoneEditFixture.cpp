#include "tests/ZoneEdit/ZoneEditFixture.h"

#include <cstdint>

#include "core/Text.h"
#include "zone/Zone.h"

namespace test {

void ZoneEditTest::makeClip(int frames) {
    support::ClipSpec spec;
    spec.frames = frames;
    makeClip(spec);
}

void ZoneEditTest::makeClip(const support::ClipSpec& spec) {
    support::makeFolder("Scenes/Fire");
    support::writeBytes("Scenes/Fire/clip.ogv", support::makeClip(spec));
    m_clipSize = {spec.width, spec.height};
    m_state.zoneEditVideo = sceneFolder("Fire") + "clip.ogv";
}

void ZoneEditTest::show(int frames, int newZones) {
    makeClip(frames);
    show();
    for (int zone = 0; zone < newZones; ++zone) {
        addZone();
    }
}

void ZoneEditTest::goTo(int frame) {
    m_driver->enter(u"EditCurrentFrame", core::displayText(std::to_string(frame)));
}

void ZoneEditTest::drawTriangle() {
    m_driver->click(u"OptionAddMultiPoint");
    clickPicture(100, 100);
    clickPicture(300, 100);
    clickPicture(200, 400);
    m_driver->click(u"OptionMovePoint");
}

platform::Point ZoneEditTest::at(int x, int y) {
    const platform::Point origin = m_driver->get(u"Video").GetPos().topLeft();
    return {origin.x + x, origin.y + y};
}

std::vector<platform::Point> ZoneEditTest::points(int zone, int frame) {
    const auto shape = zones().zone(zone)->shape(frame);
    return shape ? shape->points : std::vector<platform::Point>();
}

int ZoneEditTest::shownFrame() {
    const platform::Bitmap picture = m_driver->picture();
    const platform::Rect area = m_driver->get(u"Video").GetPos();
    std::vector<std::uint8_t> rgb;
    for (int y = 0; y < m_clipSize.height; ++y) {
        for (int x = 0; x < m_clipSize.width; ++x) {
            // The middle of what one pixel of the video was stretched to.
            const std::uint32_t pixel =
                picture.at(area.left + (2 * x + 1) * area.width() / (2 * m_clipSize.width),
                           area.top + (2 * y + 1) * area.height() / (2 * m_clipSize.height));
            rgb.push_back(static_cast<std::uint8_t>(pixel >> 16U));
            rgb.push_back(static_cast<std::uint8_t>(pixel >> 8U));
            rgb.push_back(static_cast<std::uint8_t>(pixel));
        }
    }
    return support::readFrameNumber(rgb.data(), m_clipSize.width, m_clipSize.height);
}

bool ZoneEditTest::waitForFrame(int frame) {
    return pumpUntil([this, frame] { return shownFrame() == frame; });
}

} // namespace test
