// A job as an author has it, by real events: zones over a clip of 640 x 360 with 300 frames, one of
// which follows a box whose course is known. Counts each key press, click and drag, and prints what
// they came to.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "ZoneEdit/Timeline.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/ClipMaker.h"

namespace {

using platform::Key;
using platform::Modifiers;
using platform::Point;

constexpr int kFrames = 300;
constexpr int kSide = 120; ///< of the box, in the picture area: 60 pixels of the video
constexpr Modifiers kControl{.control = true};

/// Its upper left corner: across, on a slope, and back, with a shake of one pixel of the video.
Point boxAt(int frame) {
    constexpr int kTurns[] = {0, 110, 190, 299};
    constexpr Point kAt[] = {{80, 120}, {700, 180}, {820, 440}, {240, 420}};
    const int leg = frame < kTurns[1] ? 0 : frame < kTurns[2] ? 1 : 2;
    const double part = (frame - kTurns[leg]) / static_cast<double>(kTurns[leg + 1] - kTurns[leg]);
    const double sway = 2 * std::sin(frame * 0.21);
    return {
        static_cast<int>(std::lround(kAt[leg].x + (kAt[leg + 1].x - kAt[leg].x) * part + sway)),
        static_cast<int>(std::lround(kAt[leg].y + (kAt[leg + 1].y - kAt[leg].y) * part - sway))};
}

/// How much of two boxes of equal size they share.
double overlap(Point one, Point other) {
    const double width = std::max(0, kSide - std::abs(one.x - other.x));
    const double height = std::max(0, kSide - std::abs(one.y - other.y));
    return width * height / (2.0 * kSide * kSide - width * height);
}

class ZoneEditReferenceJob : public test::ZoneEditTest {
protected:
    void press(Key key, Modifiers held = {}) {
        ++m_inputs;
        m_driver->press(key, held);
    }
    void click(std::u16string_view name) {
        ++m_inputs;
        m_driver->click(name);
    }
    /// By a click on the timeline.
    void showFrame(int frame) {
        ++m_inputs;
        const auto& line = m_driver->get<zoneedit::Timeline>(u"Timeline");
        const int x = static_cast<int>(std::lround(line.scale().xOf(frame)));
        m_driver->click(Point{x, line.GetPos().bottom - 6});
        ASSERT_EQ(frameText(), core::displayText(std::to_string(frame)));
    }
    void drawBox(Point corner, int side) {
        ++m_inputs;
        const Point from = at(corner.x, corner.y);
        const Point to = at(corner.x + side, corner.y + side);
        for (const auto& [kind, at] : {std::pair{platform::EventKind::mouseDown, from},
                                       std::pair{platform::EventKind::mouseMove, to},
                                       std::pair{platform::EventKind::mouseUp, to}}) {
            test::input().mouse(m_driver->native(), kind, at, platform::MouseButton::left,
                                kControl);
        }
        test::pump();
    }
    void dragCentre(Point from, Point to) {
        ++m_inputs;
        m_driver->drag(
            {at(from.x + kSide / 2, from.y + kSide / 2), at(to.x + kSide / 2, to.y + kSide / 2)});
    }

    int m_inputs = 0;
};

TEST_F(ZoneEditReferenceJob, ABoxIsFollowedThroughThreeHundredFramesByAFewKeys) {
    support::ClipSpec spec;
    spec.width = 640;
    spec.height = 368;
    spec.pictureWidth = 640;
    spec.pictureHeight = 360;
    spec.frames = kFrames;
    support::makeFolder("Scenes/Fire");
    support::writeBytes("Scenes/Fire/clip.ogv", support::makeClip(spec));
    m_state.zoneEditVideo = sceneFolder("Fire") + "clip.ogv";
    show();
    for (const Point corner : {Point{900, 40}, Point{40, 480}}) { // two that stand still
        click(u"ButtonAddZone");
        click(u"OptionAddMultiPoint");
        drawBox(corner, 80);
        press(Key::escape);
    }
    const int others = m_inputs;

    click(u"ButtonAddZone");
    click(u"OptionAddMultiPoint");
    drawBox(boxAt(0), kSide);
    press(Key::escape);
    press(Key::i, {.shift = true});
    Point shown = boxAt(0);
    for (const int frame : {110, 190, 299}) {
        showFrame(frame);
        dragCentre(shown, boxAt(frame));
        shown = boxAt(frame);
    }
    double sum = 0;
    double least = 1;
    for (int frame = 0; frame < kFrames; ++frame) {
        const double shared = overlap(points(2, frame).at(0), boxAt(frame));
        sum += shared;
        least = std::min(least, shared);
    }
    std::printf("three zones: %d inputs; the moving box by keys: %d inputs, mean IoU %.3f, least "
                "%.3f (598 inputs in 1.0.0)\n",
                m_inputs, m_inputs - others, sum / kFrames, least);
    EXPECT_LE(m_inputs - others, 12);
    EXPECT_GE(sum / kFrames, 0.95);
}

} // namespace
