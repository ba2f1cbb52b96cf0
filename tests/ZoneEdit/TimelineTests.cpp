// The timeline of the zone editor, operated by real keys, drags and turns of the wheel; playing on
// a clock that stands between two steps of the test.
#include <cmath>
#include <cstdint>
#include <functional>
#include <string>

#include "ZoneEdit/Timeline.h"
#include "core/Services.h"
#include "core/Text.h"
#include "platform/SilentSound.h"
#include "tests/ZoneEdit/ZoneEditFixture.h"
#include "tests/support/FixedClock.h"
#include "video/CVideoUI.h"
#include "video/Video.h"

namespace {

using platform::EventKind;
using platform::Key;
using platform::Point;

constexpr std::uint32_t kRun = 0xFF4088D0;
constexpr std::uint32_t kNoRun = 0xFFDDE4EB;

std::u16string number(int value) {
    return core::displayText(std::to_string(value));
}

class ZoneEditTimeline : public test::ZoneEditTest {
protected:
    ~ZoneEditTimeline() override { m_gui.windows().setZoom(1); }

    /// Where frame `frame` of `count` is while the whole clip is shown.
    Point atFrame(int frame, int count) {
        const platform::Rect pos = m_driver->get(u"Timeline").GetPos();
        return {pos.left + 4 + frame * (pos.width() - 8) / (count - 1), pos.bottom - 8};
    }
    void shiftDrag(Point from, Point to) {
        test::input().mouse(m_driver->native(), EventKind::mouseDown, from,
                            platform::MouseButton::left, {.shift = true});
        test::input().mouse(m_driver->native(), EventKind::mouseMove, to,
                            platform::MouseButton::left, {.shift = true});
        test::input().mouse(m_driver->native(), EventKind::mouseUp, to);
        test::pump();
    }
    void wheel(Point at, int notches, platform::Modifiers modifiers) {
        test::input().wheel(m_driver->native(), at, notches * 120, modifiers);
        test::pump();
    }
    std::u16string value() { return m_driver->get(u"Timeline").accessibleValue(); }
    /// The marked range, as its fields show it.
    std::u16string range() {
        return m_driver->textOf(u"EditRangeFrom") + u"-" + m_driver->textOf(u"EditRangeTo");
    }
};

TEST_F(ZoneEditTimeline, ADragShowsTheFramesUnderThePointerAndEndsOnTheNewest) {
    constexpr int kFrames = 61;
    makeClip(kFrames, 64);
    show();
    ASSERT_TRUE(waitForFrame(0));
    m_driver->send(EventKind::mouseDown, atFrame(50, kFrames));
    for (int frame = 49; frame >= 20; --frame) { // faster than any decoder
        m_driver->send(EventKind::mouseMove, atFrame(frame, kFrames));
    }
    test::gui().loop().processEvents(false);
    EXPECT_TRUE(waitForFrame(20));
    EXPECT_EQ(frameText(), u"20");
    m_driver->send(EventKind::mouseMove, {-500, 3});
    m_driver->send(EventKind::mouseUp, {-500, 3});
    EXPECT_TRUE(waitForFrame(0)) << "the drag goes on outside";
    m_driver->send(EventKind::mouseMove, atFrame(9, kFrames));
    test::pump();
    EXPECT_EQ(frameText(), u"0") << "until the release";
    EXPECT_EQ(m_driver->textOf(u"LabelDuration"), u"0:02.40");
}

TEST_F(ZoneEditTimeline, OneFrameIsAskedForAtATime) {
    show(60);
    ASSERT_TRUE(waitForFrame(0));
    auto& line = m_driver->get<zoneedit::Timeline>(u"Timeline");
    const auto send = [&](toolkit::EventType type, int frame) {
        toolkit::TEventUI event;
        event.Type = type;
        event.native.position = atFrame(frame, 60);
        event.native.wheelDelta = -120;
        line.DoEvent(event);
    };
    const video::Video& video = *m_driver->get<video::CVideoUI>(u"Video").video();
    send(toolkit::EventType::buttonDown, 55);
    for (const int frame : {50, 3, 40, 8}) {
        const bool waits = video.shownFrame != video.currentFrame;
        const int asked = video.currentFrame;
        send(toolkit::EventType::mouseMove, frame);
        EXPECT_TRUE(!waits || video.currentFrame == asked) << frame;
    }
    send(toolkit::EventType::buttonUp, 8);
    EXPECT_EQ(video.currentFrame, 8) << "the release does not wait";
    EXPECT_TRUE(waitForFrame(8));
    send(toolkit::EventType::buttonDown, 30);
    send(toolkit::EventType::mouseMove, 50);
    const int next = video.currentFrame + 1; // 51 where the decoder is as fast
    send(toolkit::EventType::wheel, 50);
    EXPECT_TRUE(waitForFrame(next));
    test::pump();
    EXPECT_EQ(video.currentFrame, next) << "a step replaces what was wanted";
}

TEST_F(ZoneEditTimeline, KeysAndTheWheelGoToFramesAndItSaysWhatIsThereWhateverTheScale) {
    constexpr int kFrames = 40;
    const struct {
        Key key;
        bool shift;
        std::u16string frame;
        std::u16string range;
    } jumps[] = {{Key::openBracket, false, u"11", u"-"},
                 {Key::openBracket, false, u"10", u"-"},
                 {Key::openBracket, false, u"9", u"-"},
                 {Key::openBracket, false, u"0", u"-"},
                 {Key::openBracket, false, u"0", u"-"},
                 {Key::closeBracket, false, u"9", u"-"},
                 {Key::b, false, u"9", u"9-9"},
                 {Key::end, false, u"39", u"9-9"},
                 {Key::openBracket, false, u"20", u"9-9"},
                 {Key::e, false, u"20", u"9-20"},
                 {Key::closeBracket, false, u"39", u"9-20"},
                 {Key::closeBracket, false, u"39", u"9-20"},
                 {Key::left, false, u"38", u"9-20"},
                 {Key::left, true, u"28", u"9-20"},
                 {Key::right, false, u"29", u"9-20"},
                 {Key::right, true, u"39", u"9-20"},
                 {Key::escape, false, u"39", u"-"},
                 {Key::home, false, u"0", u"-"}};
    for (const double enlarged : {1.0, 2.0}) {
        m_gui.windows().setZoom(enlarged);
        show(kFrames, 1);
        drawTriangle();
        goTo(10);
        m_driver->click(u"OptionProgressChanges"); // off
        m_driver->drag({at(100, 100), at(140, 130)});
        goTo(20);
        m_driver->click(u"OptionProgressChanges");
        m_driver->click(u"OptionToggleActive"); // not active from here on
        m_driver->click(atFrame(20, kFrames));  // gives it the focus
        for (const auto& jump : jumps) {
            m_driver->press(jump.key, {.shift = jump.shift});
            EXPECT_EQ(frameText(), jump.frame);
            EXPECT_EQ(range(), jump.range);
        }
        EXPECT_EQ(value(), u"0 of 39, 0:00.00, active, key");
        EXPECT_EQ(m_driver->get(u"Timeline").accessibleRole(), platform::AccessibleRole::slider);
        EXPECT_EQ(m_driver->get(u"Timeline").accessibleName(), u"Frame");
        m_driver->wheel(atFrame(30, kFrames), -3);
        EXPECT_EQ(value(), u"3 of 39, 0:00.12, active");
        EXPECT_EQ(m_driver->textOf(u"LabelTime"), u"0:00.12");
        goTo(30);
        EXPECT_EQ(value(), u"30 of 39, 0:01.20, not active");
    }
    m_gui.windows().setZoom(1);
    show(kFrames, 1);
    drawTriangle();
    goTo(20);
    m_driver->click(u"OptionToggleActive");
    const Point bar = atFrame(15, kFrames);
    EXPECT_EQ(m_driver->pixel(bar), kRun);
    EXPECT_EQ(m_driver->pixel(atFrame(30, kFrames)), kNoRun);
    addZone();
    EXPECT_EQ(m_driver->pixel(bar), kNoRun) << "the timeline is the chosen zone's";
    m_driver->press(Key::z, {.control = true});
    EXPECT_EQ(m_driver->pixel(bar), kRun);
    m_driver->press(Key::z, {.control = true}); // not active
    EXPECT_EQ(m_driver->pixel(atFrame(30, kFrames)), kRun);
}

TEST_F(ZoneEditTimeline, ARangeIsMarkedByShiftByKeysByItsGripsAndByItsFields) {
    constexpr int kFrames = 60;
    show(kFrames);
    m_driver->native().setGeometry(platform::Rect::at(0, 0, 1900, 900));
    ASSERT_TRUE(test::pumpUntil([&] { return isVisible(u"EditRangeFrom"); }));
    EXPECT_EQ(range(), u"-");
    shiftDrag(atFrame(40, kFrames), atFrame(20, kFrames));
    EXPECT_EQ(range(), u"20-40");
    EXPECT_EQ(frameText(), u"0");
    const auto grip = [&](int frame, int beside) {
        const platform::Rect pos = m_driver->get(u"Timeline").GetPos();
        return Point{atFrame(frame, kFrames).x + beside, pos.top + pos.height() / 2};
    };
    m_driver->drag({grip(40, 3), atFrame(50, kFrames)});
    EXPECT_EQ(range(), u"20-50");
    m_driver->drag({grip(20, -3), atFrame(55, kFrames)});
    EXPECT_EQ(range(), u"50-55");
    goTo(30);
    m_driver->press(Key::b);
    EXPECT_EQ(range(), u"30-55");
    goTo(20);
    m_driver->press(Key::e);
    EXPECT_EQ(range(), u"20-20");
    m_driver->enter(u"EditRangeTo", u"999");
    EXPECT_EQ(range(), u"20-59");
    m_driver->enter(u"EditRangeFrom", u"x");
    EXPECT_EQ(range(), u"20-59");
    m_driver->retype(u"EditRangeFrom", u"7");
    m_driver->press(Key::escape);
    EXPECT_EQ(range(), u"20-59") << "what stood there before";
    m_driver->press(Key::tab);
    clickPicture(5, 5);
    m_driver->press(Key::escape);
    EXPECT_EQ(range(), u"-");
    m_driver->enter(u"EditRangeFrom", u"12");
    EXPECT_EQ(range(), u"12-12");
    m_driver->enter(u"EditRangeFrom", u"");
    EXPECT_EQ(range(), u"-");
}

TEST_F(ZoneEditTimeline, EscTakesADragBackAndNothingElse) {
    constexpr int kFrames = 60;
    show(kFrames, 1);
    goTo(8);
    m_driver->press(Key::digit3);
    const auto grip = [&](int frame, int beside) {
        const platform::Rect pos = m_driver->get(u"Timeline").GetPos();
        return Point{atFrame(frame, kFrames).x + beside, pos.top + pos.height() / 2};
    };
    const struct {
        bool isMarked; ///< 10 to 20 beforehand
        Point press;
        bool shift;
        std::u16string frame; ///< while it is dragged to 40
        std::u16string range;
    } cases[] = {{true, atFrame(30, kFrames), true, u"8", u"30-40"},
                 {true, grip(20, 4), false, u"8", u"10-40"},
                 {true, grip(10, -4), false, u"8", u"20-40"},
                 {true, atFrame(30, kFrames), false, u"40", u"10-20"},
                 {false, atFrame(30, kFrames), true, u"8", u"30-40"}};
    for (const auto& c : cases) {
        if (c.isMarked) {
            shiftDrag(atFrame(10, kFrames), atFrame(20, kFrames));
        }
        const std::u16string before = range();
        const auto mouse = [&](EventKind kind, Point at) {
            test::input().mouse(m_driver->native(), kind, at, platform::MouseButton::left,
                                {.shift = c.shift});
            test::pump();
        };
        mouse(EventKind::mouseDown, c.press);
        mouse(EventKind::mouseMove, atFrame(40, kFrames));
        EXPECT_TRUE(test::pumpUntil([&] { return frameText() == c.frame; }));
        EXPECT_EQ(range(), c.range);
        m_driver->press(Key::escape);
        mouse(EventKind::mouseMove, atFrame(45, kFrames));
        mouse(EventKind::mouseUp, atFrame(45, kFrames));
        EXPECT_EQ(range(), before);
        EXPECT_EQ(frameText(), u"8");
        EXPECT_TRUE(test::isChecked(*m_driver, u"OptionAddMultiPoint"));
        m_driver->press(Key::escape); // ends adding
        m_driver->press(Key::escape);
        EXPECT_EQ(range(), u"-");
        m_driver->press(Key::digit3);
    }
}

TEST_F(ZoneEditTimeline, ThePlayheadIsDraggedAwayFromTheEndsOfARange) {
    constexpr int kFrames = 60;
    show(kFrames);
    const auto on = [&](int frame, int beside) {
        const auto& line = m_driver->get<zoneedit::Timeline>(u"Timeline");
        return Point{static_cast<int>(std::lround(line.scale().xOf(frame))) + beside,
                     line.GetPos().top + line.GetPos().height() / 2};
    };
    const struct {
        int from; ///< where B and E are pressed
        int to;
        bool atBegin;
    } ranges[] = {{20, 40, false}, {20, 40, true}, {30, 30, false}};
    for (const auto& range : ranges) {
        for (const int beside : {-1, 0, 1}) {
            goTo(range.from);
            m_driver->press(Key::b);
            goTo(range.to);
            m_driver->press(Key::e);
            goTo(range.atBegin ? range.from : range.to);
            const std::u16string marked = this->range();
            m_driver->drag({on(range.atBegin ? range.from : range.to, beside), on(50, 0)});
            EXPECT_EQ(frameText(), u"50");
            EXPECT_EQ(this->range(), marked);
        }
    }
    for (const int beside : {-1, 2}) { // the playhead is elsewhere, and beside it
        m_driver->press(Key::b);
        m_driver->press(Key::e);
        if (beside < 0) {
            goTo(0);
        }
        m_driver->drag({on(50, beside), on(55, 0)});
        EXPECT_EQ(this->range(), u"50-55") << beside;
        goTo(50);
    }
}

TEST_F(ZoneEditTimeline, AZoneThatIsActiveOnTheLastFrameAloneShowsIt) {
    constexpr int kFrames = 400;
    show(kFrames, 1);
    drawTriangle();
    m_driver->click(u"OptionToggleActive"); // on no frame
    const platform::Rect pos = m_driver->get(u"Timeline").GetPos();
    const auto runPixels = [&](int right) {
        const platform::Bitmap picture = m_driver->picture();
        int found = 0;
        for (int x = right - 12; x < pos.right; ++x) {
            for (int y = pos.top; y < pos.bottom; ++y) {
                found += picture.at(x, y) == kRun ? 1 : 0;
            }
        }
        return found;
    };
    EXPECT_EQ(runPixels(pos.right), 0);
    goTo(kFrames - 1);
    m_driver->click(u"OptionToggleActive");
    ASSERT_EQ(value(), u"399 of 399, 0:15.96, active, key");
    goTo(0);
    EXPECT_GT(runPixels(pos.right), 0);
    const Point middle = atFrame(200, kFrames);
    wheel(middle, 3, {.control = true});
    EXPECT_EQ(runPixels(pos.right), 0) << "not in view";
}

TEST_F(ZoneEditTimeline, ItZoomsAboutThePointerMovesAndShowsAllAgain) {
    constexpr int kFrames = 400;
    show(kFrames);
    const auto& scale = m_driver->get<zoneedit::Timeline>(u"Timeline").scale();
    const Point point = atFrame(300, kFrames);
    wheel(point, 5, {.control = true});
    EXPECT_EQ(scale.frameAt(point.x), 300);
    EXPECT_LT(scale.span(), 150);
    m_driver->click(point);
    EXPECT_EQ(frameText(), u"300");
    const double from = scale.from();
    wheel(point, 2, {.shift = true});
    EXPECT_LT(scale.from(), from);
    m_driver->press(Key::home);
    EXPECT_EQ(scale.from(), 0) << "the frame on show comes into view";
    wheel(point, 100, {.control = true});
    EXPECT_EQ(scale.span(), 25) << "a second at the least";
    m_driver->click(u"ButtonTimelineFit");
    EXPECT_TRUE(scale.showsAll());
    wheel(point, -3, {.control = true});
    EXPECT_TRUE(scale.showsAll());
    m_driver->click(atFrame(150, kFrames));
    EXPECT_EQ(frameText(), u"150");
}

class ZoneEditPlaying : public ZoneEditTimeline {
protected:
    ZoneEditPlaying() {
        m_gui.soundSystem = &m_sound;
        support::ClipSpec spec;
        spec.frames = kFrames;
        spec.sound = support::Sound::before;
        makeClip(kFrames);
        support::writeBytes("Scenes/Fire/clip.ogv", support::makeClip(spec));
        ZoneEditTest::show();
        addZone();
        drawTriangle();
        m_driver->click(at(5, 5)); // nothing has the focus
    }
    /// The next frames up to `last` come, each in its time.
    bool playsTo(int last) {
        const int next = frameNow() + 1;
        // Time begins to count with the first picture, whenever that comes.
        bool isGood = test::pumpUntil([&] {
            ++m_clock.passed;
            return frameNow() == next;
        });
        for (int frame = next; isGood && frame <= last; ++frame) {
            isGood = waitForFrame(frame) && frameText() == number(frame);
            m_clock.passed += frame < last ? 41 : 0; // a little late: samples are whole
        }
        return isGood;
    }
    int frameNow() { return m_window->session().context().shownFrame; }
    bool isPlaying() { return m_driver->get(u"ButtonPlayVideo").accessibleName() == u"Pause"; }
    /// Time passes until that frame, or one behind it, is on show.
    bool runsTo(int frame) {
        return test::pumpUntil([&] {
            m_clock.passed += 10;
            return frameNow() >= frame;
        });
    }
    /// Time passes, and the picture stays.
    bool stands() {
        const int frame = shownFrame();
        m_clock.passed += 400;
        test::pump();
        return shownFrame() == frame && !isPlaying();
    }

    static constexpr int kFrames = 20;
    support::FixedClock m_clock;
    core::ServicesOverride m_override{
        {core::services().fileSystem, &m_clock, core::services().process}};
    platform::SilentSound m_sound{m_clock};
};

TEST_F(ZoneEditPlaying, SpacePlaysFromTheFrameOnShowToTheEndAndThenFromTheStart) {
    goTo(4);
    ASSERT_TRUE(waitForFrame(4));
    m_driver->click(u"Video");
    m_driver->press(Key::space);
    EXPECT_TRUE(isPlaying());
    EXPECT_TRUE(playsTo(9));
    EXPECT_EQ(value(), u"9 of 19, 0:00.36, active");
    m_driver->press(Key::space);
    EXPECT_TRUE(stands());
    m_driver->press(Key::right);
    EXPECT_TRUE(waitForFrame(10)) << "steps go on from there";
    m_driver->click(u"ButtonPlayVideo");
    EXPECT_TRUE(playsTo(19));
    m_clock.passed += 40;
    EXPECT_TRUE(test::pumpUntil([&] { return !isPlaying(); }));
    EXPECT_EQ(frameText(), u"19");
    m_driver->click(u"ButtonPlayVideo");
    EXPECT_TRUE(waitForFrame(0));
    EXPECT_TRUE(playsTo(3));
    m_window->Close();
    test::pump();
}

TEST_F(ZoneEditPlaying, AFrameNumberIsTypedWhileTheClipPlays) {
    m_driver->click(u"ButtonPlayVideo");
    ASSERT_TRUE(playsTo(2));
    m_driver->click(u"EditCurrentFrame");
    ASSERT_TRUE(runsTo(3));
    m_driver->press(Key::a, {.control = true});
    ASSERT_TRUE(runsTo(4)); // what is selected stays so
    m_driver->type(u"1");
    ASSERT_TRUE(runsTo(5));
    m_driver->type(u"2");
    ASSERT_TRUE(runsTo(6));
    EXPECT_EQ(frameText(), u"12");
    m_driver->press(Key::escape); // what stood there
    EXPECT_EQ(frameText(), number(frameNow()));
    EXPECT_TRUE(isPlaying());
    m_driver->retype(u"EditCurrentFrame", u"12");
    ASSERT_TRUE(runsTo(7));
    m_driver->press(Key::enter);
    EXPECT_TRUE(waitForFrame(12));
    EXPECT_EQ(frameText(), u"12");
    EXPECT_TRUE(stands());

    m_driver->press(Key::home);
    ASSERT_TRUE(waitForFrame(0));
    m_driver->click(u"ButtonPlayVideo");
    m_driver->click(u"EditCurrentFrame");
    ASSERT_TRUE(runsTo(5));
    m_driver->press(Key::tab); // nothing was typed
    EXPECT_GE(frameNow(), 5);
    EXPECT_EQ(frameText(), number(frameNow()));
    m_driver->click(u"EditCurrentFrame");
    m_driver->click(u"ButtonPlayVideo");
    EXPECT_FALSE(isPlaying()) << "stopped once, not twice";
    m_driver->click(at(5, 5));
    m_driver->press(Key::home);
    m_driver->click(u"ButtonPlayVideo");
    m_driver->click(u"EditCurrentFrame");
    ASSERT_TRUE(runsTo(3));
    m_driver->type(u"7");
    EXPECT_TRUE(test::pumpUntil([&] { // to the end
        m_clock.passed += 10;
        return !isPlaying();
    }));
    EXPECT_NE(frameText(), u"19") << "typed";
}

TEST_F(ZoneEditPlaying, TheClipGoesOnWhileThePictureIsMovedAndAMessageClosed) {
    m_driver->pick(u"ComboZoom", 4); // 400 %
    m_driver->click(u"Video");
    m_driver->get(u"PanelNotice").SetVisible(true);
    test::pump();
    const auto click = [&](platform::MouseButton button, Point at) {
        test::input().mouse(m_driver->native(), EventKind::mouseDown, at, button);
        test::input().mouse(m_driver->native(), EventKind::mouseUp, at, button);
        test::pump();
    };
    const auto middleOf = [&](const char16_t* name) {
        return test::WindowDriver::middleOf(m_driver->get(name));
    };
    m_driver->click(u"ButtonPlayVideo");
    ASSERT_TRUE(runsTo(1));
    click(platform::MouseButton::middle, middleOf(u"Video"));
    test::input().key(m_driver->native(), EventKind::keyDown, Key::space, {}, {});
    m_driver->drag({middleOf(u"Video"), {middleOf(u"Video").x + 30, middleOf(u"Video").y}});
    test::input().key(m_driver->native(), EventKind::keyUp, Key::space, {}, {});
    test::pump();
    click(platform::MouseButton::left, middleOf(u"Overview"));
    click(platform::MouseButton::left, middleOf(u"ButtonCloseNotice"));
    EXPECT_TRUE(isPlaying());
    EXPECT_TRUE(runsTo(3));
    click(platform::MouseButton::left, middleOf(u"Video"));
    EXPECT_FALSE(isPlaying());
}

TEST_F(ZoneEditPlaying, WhateverEditsOrGoesToAFrameStopsOnTheFrameThatWasSeen) {
    const std::function<void()> actions[] = {
        [&] { clickPicture(100, 100); },
        [&] { m_driver->click(u"OptionToggleActive"); },
        [&] { m_driver->press(Key::z, {.control = true}); },
        [&] { addZone(); },
        [&] { m_driver->press(Key::escape); },
    };
    for (const auto& act : actions) {
        m_driver->press(Key::home);
        ASSERT_TRUE(waitForFrame(0));
        m_driver->click(u"ButtonPlayVideo");
        ASSERT_TRUE(playsTo(3));
        act();
        EXPECT_TRUE(stands());
    }
    m_driver->click(u"ButtonPlayVideo");
    m_driver->click(atFrame(15, kFrames));
    EXPECT_TRUE(waitForFrame(15));
    EXPECT_TRUE(stands());
}

} // namespace
