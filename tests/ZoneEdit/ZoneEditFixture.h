// The zone editor on a clip whose frames carry their numbers, so that a test can read from the
// screen which frame is shown.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ZoneEdit/CurrentZones.h"
#include "ZoneEdit/ZoneEdit.h"
#include "core/Text.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/windows/EditorTest.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace test {

/// What the log says of a video that has no zones yet.
inline const std::vector<std::string> kNoZones{"Unable to load zone binary"};

class ZoneEditTest : public WindowTest<zoneedit::ZoneEdit> {
protected:
    ~ZoneEditTest() override { zoneedit::setCurrentZoneManager(nullptr); }

    /// Makes "Scenes/Fire/clip.ogv" with this many frames and tells the editor to open it.
    void makeClip(int frames, int keyframeDistance = support::ClipSpec().keyframeDistance) {
        support::ClipSpec spec;
        spec.frames = frames;
        spec.keyframeDistance = keyframeDistance;
        support::makeFolder("Scenes/Fire");
        support::writeBytes("Scenes/Fire/clip.ogv", support::makeClip(spec));
        m_state.zoneEditVideo = sceneFolder("Fire") + "clip.ogv";
    }
    using WindowTest::show;
    /// Shows the window on a clip with this many frames.
    void show(int frames, int newZones = 0) {
        makeClip(frames);
        show();
        for (int zone = 0; zone < newZones; ++zone) {
            addZone();
        }
    }
    /// Gives the caption room for long texts.
    void widen() { resize({1550, m_driver->native().geometry().height()}); }
    void resize(platform::Size size) {
        m_driver->native().setGeometry(platform::Rect::at(0, 0, size.width, size.height));
        ASSERT_TRUE(test::pumpUntil([&] { return m_driver->manager().GetWindowSize() == size; }));
    }
    /// Adds a zone by its button.
    void addZone() { m_driver->click(u"ButtonAddZone"); }
    void goTo(int frame) {
        m_driver->enter(u"EditCurrentFrame", core::displayText(std::to_string(frame)));
    }
    /// A point of the picture area in window pixels.
    platform::Point at(int x, int y) {
        const platform::Point origin = m_driver->get(u"Video").GetPos().topLeft();
        return {origin.x + x, origin.y + y};
    }
    /// Clicks into the picture area.
    void clickPicture(int x, int y) { m_driver->click(at(x, y)); }
    /// Three points on all frames of the current zone.
    void drawTriangle() {
        m_driver->click(u"OptionAddMultiPoint");
        clickPicture(100, 100);
        clickPicture(300, 100);
        clickPicture(200, 400);
        m_driver->click(u"OptionMovePoint");
    }

    const zone::ZoneManager& zones() { return *zoneedit::currentZoneManager(); }
    const zone::EditContext& editing() { return m_window->session().context(); }
    /// The points of a zone on a frame, in display pixels; empty without a shape.
    std::vector<platform::Point> points(int zone, int frame) {
        const auto shape = zones().zone(zone)->shape(frame);
        return shape ? shape->points : std::vector<platform::Point>();
    }
    std::u16string frameText() { return m_driver->textOf(u"EditCurrentFrame"); }
    /// The number that the picture on the screen carries; -1 when it carries none.
    int shownFrame() {
        const platform::Bitmap picture = m_driver->picture();
        const platform::Rect area = m_driver->get(u"Video").GetPos();
        const support::ClipSpec clip;
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < clip.height; ++y) {
            for (int x = 0; x < clip.width; ++x) {
                // The middle of what one pixel of the video was stretched to.
                pixels.push_back(
                    picture.at(area.left + (2 * x + 1) * area.width() / (2 * clip.width),
                               area.top + (2 * y + 1) * area.height() / (2 * clip.height)));
            }
        }
        return support::readFrameNumber(reinterpret_cast<const std::uint8_t*>(pixels.data()),
                                        clip.width, clip.height, sizeof pixels[0]);
    }
    /// Waits until the screen shows the frame. False when it does not come.
    bool waitForFrame(int frame) {
        return pumpUntil([this, frame] { return shownFrame() == frame; });
    }
};

} // namespace test
