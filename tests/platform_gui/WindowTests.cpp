#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using platform::Bitmap;
using platform::Event;
using platform::EventKind;
using platform::Key;
using platform::Point;
using platform::Rect;
using platform::rgb;
using platform::Size;
using platform::WindowKind;
using test::TestWindow;
using Events = std::vector<std::string>;

TEST(Window, SendsDestroyedExactlyOnceHoweverItEnds) {
    const std::tuple<const char*, int, bool, bool> cases[] = {
        {"close", 1, false, false},
        {"close twice", 2, false, false},
        {"the object", 0, false, true},
        {"close and the object", 1, false, true},
        {"close, its event and the object", 1, true, true},
    };
    for (const auto& [how, closes, pumps, destroys] : cases) {
        TestWindow window;
        window.show();
        for (int i = 0; i < closes; ++i) {
            window.native().close();
        }
        if (pumps) {
            test::pump();
        }
        if (destroys) {
            window.destroy();
        }
        test::pump();
        EXPECT_EQ(window.takeEvents(), (Events{"destroyed"})) << how;
    }
}

TEST(Window, SendsNothingBetweenCloseAndDestroyed) {
    TestWindow window;
    window.noteTimers = window.noteFocus = window.noteMoves = true;
    window.show();
    EXPECT_TRUE(window.native().startTimer(1, 0));
    test::input().mouse(window.native(), EventKind::mouseDown, {5, 5});
    test::input().key(window.native(), EventKind::keyDown, Key::enter);
    window.native().invalidate({0, 0, 9, 9});
    window.native().close();
    EXPECT_FALSE(window.isDestroyed());
    EXPECT_TRUE(test::pumpUntil([&] { return window.isDestroyed(); }));
    test::pump();
    EXPECT_EQ(window.takeEvents(), (Events{"destroyed"}));
    EXPECT_TRUE(window.takePaints().empty());
}

TEST(Window, MayBeDestroyedInsideItsOwnEvents) {
    const EventKind kinds[] = {EventKind::mouseDown, EventKind::keyDown, EventKind::closeRequest,
                               EventKind::timer, EventKind::captureLost};
    for (const EventKind kind : kinds) {
        TestWindow window;
        window.show();
        window.answer = [&](const Event& event) {
            if (event.kind == kind) {
                window.destroy();
            }
            return false;
        };
        auto& input = test::input();
        input.mouse(window.native(), EventKind::mouseDown, {1, 1});
        input.key(window.native(), EventKind::keyDown, Key::a, u"a");
        input.requestClose(window.native());
        window.native().startTimer(1, 0);
        window.native().setCapture();
        if (kind == EventKind::captureLost) {
            window.native().show(false);
        }
        EXPECT_TRUE(test::pumpUntil([&] { return window.isDestroyed(); }));
    }
}

TEST(Window, AnUnhandledCloseRequestClosesAndAHandledOneDoesNot) {
    TestWindow window;
    window.show();
    bool keep = true;
    window.answer = [&](const Event& event) {
        return event.kind == EventKind::closeRequest && keep;
    };
    test::press(window.native(), Key::f4);
    EXPECT_EQ(window.takeEvents().size(), 2U);
    test::input().key(window.native(), EventKind::keyDown, Key::f4, {}, {.alt = true});
    test::pump();
    const Events events = window.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), "closeRequest"), 1) << "Alt+F4 asks too";
    test::input().requestClose(window.native());
    test::pump();
    EXPECT_EQ(window.takeEvents(), (Events{"closeRequest"}));
    keep = false;
    test::input().requestClose(window.native());
    test::pump();
    EXPECT_EQ(window.takeEvents(), (Events{"closeRequest", "destroyed"}));
}

TEST(Window, RunsTimersByIdUntilTheyAreStopped) {
    TestWindow window;
    window.show();
    std::map<unsigned, int> ticks;
    window.answer = [&](const Event& event) {
        if (event.kind == EventKind::timer && ++ticks[event.timerId] == 3 && event.timerId == 7) {
            EXPECT_TRUE(window.native().stopTimer(7)) << "inside its own event";
            EXPECT_FALSE(window.native().stopTimer(7));
        }
        return true;
    };
    EXPECT_TRUE(window.native().startTimer(7, 1));
    EXPECT_TRUE(window.native().startTimer(1824, 1));
    EXPECT_TRUE(test::pumpUntil([&] { return ticks[7] >= 3 && ticks[1824] >= 3; }));
    const int goal = ticks[1824] + 5;
    EXPECT_TRUE(test::pumpUntil([&] { return ticks[1824] >= goal; }));
    EXPECT_EQ(ticks[7], 3);
    EXPECT_FALSE(window.native().stopTimer(99));
}

TEST(Painting, CoversExactlyWhatWasInvalidated) {
    TestWindow window;
    window.show();
    window.native().invalidate({10, 10, 20, 20});
    window.native().invalidate({100, 50, 120, 60});
    window.native().invalidate({15, 15, 25, 25});
    window.native().invalidate({500, 500, 600, 600});
    window.native().invalidate({-5, 90, 5, 999});
    test::pump();
    auto paints = window.takePaints();
    std::sort(paints.begin(), paints.end(),
              [](const Rect& a, const Rect& b) { return a.top < b.top; });
    EXPECT_EQ(paints, (std::vector<Rect>{{10, 10, 25, 25}, {100, 50, 120, 60}, {0, 90, 5, 100}}));
    test::pump();
    EXPECT_TRUE(window.takePaints().empty());
    window.native().invalidate({1, 2, 3, 4});
    window.native().repaintNow();
    EXPECT_EQ(window.takePaints(), (std::vector<Rect>{{1, 2, 3, 4}})) << "before it returns";
}

TEST(Painting, KeepsWhatIsNotDirtyAndShowsItInTheSnapshot) {
    TestWindow window;
    platform::Color color = rgb(10, 20, 30);
    window.paint = [&](platform::Canvas& canvas) { canvas.fillRect({0, 0, 200, 100}, color); };
    window.show();
    const Bitmap before = window.native().snapshot();
    EXPECT_EQ(before.size(), (Size{200, 100}));
    EXPECT_EQ(before.at(0, 0), rgb(10, 20, 30));
    EXPECT_EQ(before.at(199, 99), rgb(10, 20, 30));
    color = rgb(200, 0, 0);
    window.native().invalidate({50, 50, 60, 60});
    test::pump();
    EXPECT_EQ(window.takePaints().size(), 2U);
    color = rgb(0, 200, 0);
    EXPECT_EQ(window.native().snapshot().at(55, 55), rgb(0, 200, 0));
    EXPECT_EQ(window.takePaints(), (std::vector<Rect>{{0, 0, 200, 100}}));
}

TEST(Painting, FollowsTheWindowsSize) {
    TestWindow window;
    window.paint = [](platform::Canvas& canvas) {
        canvas.fillRect({0, 0, 999, 999}, rgb(1, 2, 3));
    };
    window.show();
    window.native().setGeometry({10, 20, 310, 260});
    EXPECT_TRUE(test::pumpUntil([&] {
        const auto paints = window.takePaints();
        return std::count(paints.begin(), paints.end(), Rect{0, 0, 300, 240}) > 0;
    }));
    EXPECT_EQ(window.native().geometry(), (Rect{10, 20, 310, 260}));
    EXPECT_EQ(window.native().snapshot().at(299, 239), rgb(1, 2, 3));
}

TEST(FrameBuffer, IsBlackMemoryOfTheDisplaysRowLength) {
    TestWindow window;
    auto result = window.native().createFrameBuffer({642, 3});
    ASSERT_NE(result.buffer, nullptr);
    EXPECT_FALSE(result.windowContextFailed || result.memoryContextFailed || result.bitmapFailed);
    EXPECT_EQ(result.buffer->rowBytes(), 1928);
    EXPECT_EQ(result.buffer->byteCount(), 5784U);
    EXPECT_EQ(std::count(result.buffer->bits(), result.buffer->bits() + 5784, 0), 5784);
}

TEST(FrameBuffer, ReportsABitmapThatCannotBe) {
    TestWindow window;
    for (const Size size : {Size{0, 10}, Size{10, 0}, Size{-5, 5}, Size{2000000000, 2000000000}}) {
        const auto result = window.native().createFrameBuffer(size);
        EXPECT_TRUE(result.bitmapFailed);
        EXPECT_EQ(result.buffer, nullptr);
    }
}

TEST(FrameBuffer, IsShownBottomRowFirstAndStretched) {
    TestWindow window;
    auto frame = window.native().createFrameBuffer({2, 2}).buffer;
    ASSERT_NE(frame, nullptr);
    frame->bits()[2] = 255;                     // bottom left red
    frame->bits()[frame->rowBytes() + 3] = 255; // top right blue
    window.paint = [&](platform::Canvas& canvas) { canvas.drawFrame(*frame, {10, 10, 50, 30}); };
    const Bitmap picture = window.native().snapshot();
    EXPECT_EQ(picture.at(10, 29), rgb(255, 0, 0));
    EXPECT_EQ(picture.at(29, 20), rgb(255, 0, 0));
    EXPECT_EQ(picture.at(30, 10), rgb(0, 0, 255));
    EXPECT_EQ(picture.at(49, 19), rgb(0, 0, 255));
    EXPECT_EQ(picture.at(10, 10), rgb(0, 0, 0));
}

TEST(Placement, CentresOnTheScreenAndOnTheOwner) {
    TestWindow owner({400, 300});
    owner.native().center();
    const Rect area = test::gui().windows().workArea({10, 10});
    const Rect placed = owner.native().geometry();
    EXPECT_NEAR(placed.left - area.left, area.right - placed.right, 1);
    EXPECT_NEAR(placed.top - area.top, area.bottom - placed.bottom, 1);
    owner.native().setGeometry({100, 200, 500, 500});
    owner.show();
    TestWindow dialog({100, 100}, &owner.native());
    dialog.native().center();
    EXPECT_NEAR(dialog.native().geometry().left, 250, 1);
    EXPECT_NEAR(dialog.native().geometry().top, 300, 1);
    EXPECT_EQ(dialog.native().geometry().size(), (Size{100, 100}));
}

TEST(Placement, KnowsTheScreen) {
    auto& windows = test::gui().windows();
    const Rect area = windows.workArea({0, 0});
    EXPECT_FALSE(area.isEmpty());
    EXPECT_GE(windows.primaryScreenHeight(), area.height());
    EXPECT_EQ(windows.workArea({-100000, 100000}), area);
}

TEST(Activation, MovesWithTheKeyboardAndNeverToAPopup) {
    TestWindow first;
    first.noteFocus = true;
    first.native().show(true);
    EXPECT_TRUE(test::pumpUntil([&] {
        const Events events = first.takeEvents();
        return std::count(events.begin(), events.end(), "activated") == 1;
    }));
    TestWindow popup({50, 50}, &first.native(), WindowKind::popup);
    popup.noteFocus = true;
    popup.show();
    test::click(popup.native(), {5, 5});
    EXPECT_EQ(popup.takeEvents(), (Events{"down 1 5,5", "up 1 5,5"}));
    EXPECT_EQ(first.takeEvents(), Events());
    TestWindow second;
    second.noteFocus = true;
    second.native().show(true);
    EXPECT_TRUE(test::pumpUntil([&] { return first.takeEvents() == Events{"deactivated"}; }));
    second.native().close();
    first.native().activate();
    EXPECT_TRUE(test::pumpUntil([&] { return first.takeEvents() == Events{"activated"}; }));
}

TEST(Components, CountsSuccesses) {
    auto& components = test::gui().components();
    std::uint32_t error = 99;
    EXPECT_TRUE(components.initialize(error));
    EXPECT_TRUE(components.initialize(error));
    components.uninitialize();
    components.uninitialize();
}
