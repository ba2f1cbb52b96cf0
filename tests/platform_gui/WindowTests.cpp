#include <algorithm>
#include <stdexcept>
#include <string>
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
    const struct {
        const char* how;
        void (*end)(TestWindow&);
    } cases[] = {
        {"close", [](TestWindow& w) { w.native().close(); }},
        {"close twice",
         [](TestWindow& w) {
             w.native().close();
             w.native().close();
         }},
        {"the object", [](TestWindow& w) { w.destroy(); }},
        {"close and the object",
         [](TestWindow& w) {
             w.native().close();
             w.destroy();
         }},
        {"close, its event and the object",
         [](TestWindow& w) {
             w.native().close();
             test::pump();
             w.destroy();
         }},
    };
    for (const auto& c : cases) {
        TestWindow window;
        window.show();
        c.end(window);
        test::pump();
        EXPECT_EQ(window.takeEvents(), (Events{"destroyed"})) << c.how;
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
    test::input().requestClose(window.native());
    test::pump();
    EXPECT_EQ(window.takeEvents(), (Events{"closeRequest"}));
    test::press(window.native(), Key::other);
    EXPECT_EQ(window.takeEvents().size(), 2U);
    keep = false;
    test::input().requestClose(window.native());
    test::pump();
    EXPECT_EQ(window.takeEvents(), (Events{"closeRequest", "destroyed"}));
}

TEST(Window, AltF4AsksToCloseUnlessTheWindowUsesIt) {
    TestWindow window;
    window.show();
    window.answer = [](const Event& event) { return event.kind == EventKind::closeRequest; };
    test::press(window.native(), Key::f4);
    EXPECT_EQ(window.takeEvents().size(), 2U);
    test::input().key(window.native(), EventKind::keyDown, Key::f4, {}, {.alt = true});
    test::pump();
    const Events events = window.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), "closeRequest"), 1);
}

TEST(Window, RunsTimersByIdUntilTheyAreStopped) {
    TestWindow window;
    window.show();
    window.noteTimers = true;
    int first = 0;
    int second = 0;
    window.answer = [&](const Event& event) {
        first += event.kind == EventKind::timer && event.timerId == 7 ? 1 : 0;
        second += event.kind == EventKind::timer && event.timerId == 1824 ? 1 : 0;
        return true;
    };
    EXPECT_TRUE(window.native().startTimer(7, 1));
    EXPECT_TRUE(window.native().startTimer(1824, 2));
    EXPECT_TRUE(test::pumpUntil([&] { return first >= 3 && second >= 3; }));
    EXPECT_TRUE(window.native().stopTimer(7));
    EXPECT_FALSE(window.native().stopTimer(7));
    const int stoppedAt = first;
    const int goal = second + 3;
    EXPECT_TRUE(test::pumpUntil([&] { return second >= goal; }));
    EXPECT_EQ(first, stoppedAt);
    EXPECT_FALSE(window.native().stopTimer(99));
}

TEST(Window, ATimerMayStopItself) {
    TestWindow window;
    window.show();
    int count = 0;
    int other = 0;
    window.answer = [&](const Event& event) {
        if (event.kind == EventKind::timer && event.timerId == 1) {
            ++count;
            EXPECT_TRUE(window.native().stopTimer(1));
        }
        other += event.kind == EventKind::timer && event.timerId == 2 ? 1 : 0;
        return true;
    };
    window.native().startTimer(1, 1);
    window.native().startTimer(2, 1);
    EXPECT_TRUE(test::pumpUntil([&] { return other >= 5; }));
    EXPECT_EQ(count, 1);
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
}

TEST(Painting, HappensInsideRepaintNow) {
    TestWindow window;
    window.show();
    window.native().invalidate({1, 2, 3, 4});
    window.native().repaintNow();
    EXPECT_EQ(window.takePaints(), (std::vector<Rect>{{1, 2, 3, 4}}));
    window.native().repaintNow();
    EXPECT_TRUE(window.takePaints().empty());
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

TEST(Painting, OutlivesAPainterThatThrows) {
    TestWindow window;
    window.show();
    window.paint = [](platform::Canvas&) { throw std::runtime_error("broken painter"); };
    testing::internal::CaptureStderr();
    window.native().invalidate({0, 0, 9, 9});
    test::pump();
    EXPECT_NE(testing::internal::GetCapturedStderr().find("broken painter"), std::string::npos);
    window.paint = nullptr;
    window.native().invalidate({0, 0, 9, 9});
    test::pump();
    EXPECT_EQ(window.takePaints().size(), 2U);
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
    EXPECT_GT(area.width(), 0);
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

TEST(Dialog, RunsItsOwnLoopAboveADisabledOwner) {
    TestWindow owner;
    owner.show();
    TestWindow dialog({80, 60}, &owner.native());
    dialog.answer = [&](const Event& event) {
        if (event.kind == EventKind::mouseUp) {
            owner.native().setEnabled(true);
            dialog.native().close();
        }
        if (event.kind == EventKind::destroyed) {
            test::gui().loop().postQuit(0);
        }
        return true;
    };
    owner.native().setEnabled(false);
    dialog.native().center();
    dialog.native().show(true);
    auto& input = test::input();
    input.mouse(owner.native(), EventKind::mouseDown, {5, 5});
    input.mouse(owner.native(), EventKind::mouseUp, {5, 5});
    input.mouse(dialog.native(), EventKind::mouseDown, {5, 5});
    input.mouse(dialog.native(), EventKind::mouseUp, {5, 5});
    EXPECT_EQ(test::gui().loop().run(), 0);
    EXPECT_EQ(owner.takeEvents(), Events());
    EXPECT_EQ(dialog.takeEvents(), (Events{"down 1 5,5", "up 1 5,5", "destroyed"}));
    test::click(owner.native(), {5, 5});
    EXPECT_EQ(owner.takeEvents().size(), 2U);
}

TEST(Components, CountsSuccesses) {
    auto& components = test::gui().components();
    std::uint32_t error = 99;
    EXPECT_TRUE(components.initialize(error));
    EXPECT_TRUE(components.initialize(error));
    components.uninitialize();
    components.uninitialize();
}
