#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/raster/FrameScaler.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using platform::Bitmap;
using platform::Event;
using platform::EventKind;
using platform::Key;
using platform::Rect;
using platform::rgb;
using platform::Size;
using platform::WindowKind;
using platform::raster::nearestIndex;
using platform::raster::nearestRow;
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
    window.unnoted.clear();
    window.show();
    EXPECT_TRUE(window.native().timers().start(1, 0));
    test::input().mouse(window.native(), EventKind::mouseDown, {5, 5});
    test::input().key(window.native(), EventKind::keyDown, Key::enter);
    window.native().picture().invalidate({0, 0, 9, 9});
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
        window.native().timers().start(1, 0);
        window.native().input().setCapture();
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
            EXPECT_TRUE(window.native().timers().stop(7)) << "inside its own event";
            EXPECT_FALSE(window.native().timers().stop(7));
        }
        return true;
    };
    EXPECT_TRUE(window.native().timers().start(7, 1));
    EXPECT_TRUE(window.native().timers().start(1824, 1));
    EXPECT_TRUE(test::pumpUntil([&] { return ticks[7] >= 3 && ticks[1824] >= 3; }));
    const int goal = ticks[1824] + 5;
    EXPECT_TRUE(test::pumpUntil([&] { return ticks[1824] >= goal; }));
    EXPECT_EQ(ticks[7], 3);
    EXPECT_FALSE(window.native().timers().stop(99));
}

TEST(Painting, CoversExactlyWhatWasInvalidated) {
    TestWindow window;
    window.show();
    window.native().picture().invalidate({10, 10, 20, 20});
    window.native().picture().invalidate({100, 50, 120, 60});
    window.native().picture().invalidate({15, 15, 25, 25});
    window.native().picture().invalidate({500, 500, 600, 600});
    window.native().picture().invalidate({-5, 90, 5, 999});
    test::pump();
    auto paints = window.takePaints();
    std::sort(paints.begin(), paints.end(),
              [](const Rect& a, const Rect& b) { return a.top < b.top; });
    EXPECT_EQ(paints, (std::vector<Rect>{{10, 10, 25, 25}, {100, 50, 120, 60}, {0, 90, 5, 100}}));
    test::pump();
    EXPECT_TRUE(window.takePaints().empty());
    window.native().picture().invalidate({1, 2, 3, 4});
    window.native().picture().repaintNow();
    EXPECT_EQ(window.takePaints(), (std::vector<Rect>{{1, 2, 3, 4}})) << "before it returns";
    static_cast<void>(window.native().picture().snapshot());
    EXPECT_EQ(window.takePaints(), (std::vector<Rect>{{0, 0, 200, 100}})) << "a snapshot is whole";
}

TEST(Painting, WaitsWhileTheWindowIsMinimised) {
    TestWindow window;
    window.show();
    const Rect place = window.native().geometry();
    test::input().minimize(window.native(), true);
    test::pump();
    static_cast<void>(window.takePaints());
    window.native().picture().invalidate({10, 10, 20, 20});
    test::pump();
    EXPECT_TRUE(window.takePaints().empty());
    EXPECT_EQ(window.native().geometry(), place);
    EXPECT_EQ(window.native().picture().snapshot().size(), place.size()) << "for whoever asks";
    static_cast<void>(window.takePaints());
    window.native().picture().invalidate({10, 10, 20, 20});
    test::input().minimize(window.native(), false);
    test::pump();
    const auto paints = window.takePaints();
    ASSERT_FALSE(paints.empty());
    EXPECT_EQ(paints.front().intersected({10, 10, 20, 20}), (Rect{10, 10, 20, 20}));
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
    EXPECT_EQ(window.native().picture().snapshot().at(299, 239), rgb(1, 2, 3));
}

TEST(Sizing, KeepsTheLeastSizeAndComesBackFromOtherStates) {
    using platform::WindowState;
    TestWindow window({300, 200}, nullptr, WindowKind::normal, {250, 150});
    window.show();
    const Rect place = Rect::at(60, 50, 320, 220);
    window.native().setGeometry(place);
    test::pump();
    const auto reaches = [&](WindowState state) {
        window.native().setState(state);
        return test::pumpUntil([&] { return window.native().state() == state; });
    };
    static_cast<void>(window.takeEvents());
    EXPECT_TRUE(reaches(WindowState::maximized));
    test::pump();
    EXPECT_FALSE(window.takeEvents().empty()) << "the owner hears of it";
    EXPECT_EQ(window.native().geometry(), test::gui().windows().workArea({0, 0}));
    EXPECT_EQ(window.native().normalGeometry(), place);
    EXPECT_TRUE(reaches(WindowState::normal));
    test::pump();
    EXPECT_EQ(window.native().geometry(), place);
    EXPECT_TRUE(reaches(WindowState::minimized));
    EXPECT_EQ(window.native().normalGeometry(), place);

    TestWindow fixed;
    fixed.show();
    fixed.native().setState(WindowState::maximized);
    test::pump();
    EXPECT_EQ(fixed.native().state(), WindowState::normal);
    EXPECT_EQ(fixed.native().geometry().size(), (Size{200, 100}));
}

TEST(Scale, ChangesPixelsAndNeitherSizesNorPlacesOfPresses) {
    platform::WindowHost& windows = test::gui().windows();
    TestWindow window({301, 101});
    window.paint = [](platform::Canvas& canvas) {
        canvas.fillRect({0, 0, 301, 101}, rgb(0, 0, 9));
        canvas.fillRect({298, 98, 301, 101}, rgb(9, 0, 0));
    };
    window.show();
    const platform::Rect primary = windows.workArea({0, 0});
    for (const double zoom : {1.25, 2.0, 1.0}) {
        windows.setZoom(zoom);
        test::pump();
        const int width = static_cast<int>(std::ceil(301 * zoom));
        const int height = static_cast<int>(std::ceil(101 * zoom));
        const Bitmap picture = window.native().picture().snapshot();
        EXPECT_EQ(picture.size(), (Size{width, height}));
        EXPECT_EQ(picture.at(width - 1, height - 1) & 0xFFFFFF, 0x090000U) << "to the last pixel";
        EXPECT_EQ(picture.at(width - 7, height - 7) & 0xFFFFFF, 0x000009U);
        EXPECT_EQ(window.native().geometry().size(), (Size{301, 101}));
        EXPECT_NEAR(windows.workArea({0, 0}).width() * zoom, primary.width(), 2);
        test::click(window.native(), {297, 77});
        EXPECT_EQ(window.takeEvents(), (std::vector<std::string>{"down 1 297,77", "up 1 297,77"}));
        TestWindow other({80, 60}, &window.native(), WindowKind::popup);
        EXPECT_EQ(other.native().scale(), window.native().scale());
    }
}

TEST(Scale, StepsDownUntilTheLeastSizeFitsTheScreen) {
    platform::WindowHost& windows = test::gui().windows();
    const Size area = windows.workArea({0, 0}).size();
    const Size wide{area.width * 5 / 4 - 8, 100};
    const Size high{100, area.height * 5 / 3 - 8};
    TestWindow fixed(wide);
    TestWindow sizable(high, nullptr, WindowKind::normal, high);
    TestWindow shrinking({wide.width, high.height}, nullptr, WindowKind::normal, {90, 90});
    for (const double zoom : {1.0, 2.0, 1.0}) {
        windows.setZoom(zoom);
        test::pump();
        EXPECT_EQ(fixed.native().scale(), 0.8);
        EXPECT_EQ(sizable.native().scale(), 0.6);
        EXPECT_EQ(shrinking.native().scale(), zoom) << "it can be smaller";
        EXPECT_EQ(fixed.native().geometry().size(), wide);
        EXPECT_EQ(sizable.native().geometry().size(), high);
    }
}

TEST(FrameBuffer, ReportsABitmapThatCannotBe) {
    TestWindow window;
    for (const Size size : {Size{0, 10}, Size{10, 0}, Size{-5, 5}, Size{2000000000, 2000000000}}) {
        const auto result = window.native().picture().createFrameBuffer(size);
        EXPECT_TRUE(result.bitmapFailed);
        EXPECT_EQ(result.buffer, nullptr);
    }
}

TEST(FrameBuffer, IsShownBottomRowFirstAndStretchedByTheSamePixelsEverywhere) {
    const std::pair<Size, Size> cases[] = {
        {{8, 8}, {4, 4}},    {{640, 360}, {512, 300}}, {{352, 288}, {640, 360}},
        {{7, 9}, {3, 2}},    {{100, 37}, {37, 100}},   {{37, 100}, {100, 37}},
        {{4, 4}, {6, 6}},    {{500, 499}, {499, 500}}, {{5, 5}, {5, 5}},
        {{10, 7}, {29, 31}}, {{14, 7}, {5, 3}},
    };
    constexpr int kLeft = 3;
    constexpr int kTop = 2;
    const auto colorOf = [](int x, int y) {
        return 0xFF000000U | static_cast<unsigned>(x << 12 | y);
    };
    for (const auto& [source, target] : cases) {
        SCOPED_TRACE(std::to_string(source.width) + "x" + std::to_string(source.height));
        TestWindow window({target.width + kLeft, target.height + kTop});
        const auto frame = window.native().picture().createFrameBuffer(source).buffer;
        ASSERT_NE(frame, nullptr);
        for (int y = 0; y < source.height; ++y) {
            std::uint8_t* pixel = frame->bits() + (source.height - 1 - y) * frame->rowBytes();
            for (int x = 0; x < source.width; ++x) {
                for (const unsigned shift : {0U, 8U, 16U}) {
                    *pixel++ = static_cast<std::uint8_t>(colorOf(x, y) >> shift);
                }
            }
        }
        window.paint = [&, size = target](platform::Canvas& canvas) {
            canvas.drawFrame(*frame, Rect::at(kLeft, kTop, size.width, size.height));
        };
        const Bitmap picture = window.native().picture().snapshot();
        int different = 0;
        for (int y = 0; y < target.height; ++y) {
            for (int x = 0; x < target.width; ++x) {
                const auto expected = colorOf(nearestIndex(x, source.width, target.width),
                                              nearestRow(y, source.height, target.height));
                different += picture.at(kLeft + x, kTop + y) != expected ? 1 : 0;
            }
        }
        EXPECT_EQ(different, 0);
    }
}

TEST(Placement, CentresOnTheScreenAndOnTheOwnerWithinTheWorkArea) {
    auto& windows = test::gui().windows();
    const Rect area = windows.workArea({10, 10});
    EXPECT_EQ(windows.workArea({-100000, 100000}), area);
    EXPECT_GE(windows.primaryScreenHeight(), area.height());
    TestWindow owner({400, 300});
    owner.native().center();
    const Rect placed = owner.native().geometry();
    EXPECT_NEAR(placed.left - area.left, area.right - placed.right, 1);
    EXPECT_NEAR(placed.top - area.top, area.bottom - placed.bottom, 1);
    owner.native().setGeometry({100, 200, 501, 501});
    owner.show();
    TestWindow dialog({100, 100}, &owner.native());
    dialog.native().center();
    EXPECT_EQ(dialog.native().geometry(), Rect::at(250, 300, 100, 100));
    owner.native().setGeometry(Rect::at(area.right - 20, area.top - 90, 400, 100));
    dialog.native().center();
    EXPECT_EQ(dialog.native().geometry(), Rect::at(area.right - 100, area.top, 100, 100));
    TestWindow large({area.width() + 300, area.height() + 200});
    large.native().center();
    const Rect seen = large.native().workArea({0, 0});
    EXPECT_EQ(seen.intersected(large.native().geometry()), large.native().geometry())
        << "all of it can be reached";
}

TEST(Activation, MovesWithTheKeyboardAndNeverToAPopup) {
    const std::set<EventKind> kMoves{EventKind::mouseMove, EventKind::mouseLeave};
    TestWindow first;
    first.unnoted = kMoves;
    first.native().show(true);
    EXPECT_TRUE(test::pumpUntil([&] {
        const Events events = first.takeEvents();
        return std::count(events.begin(), events.end(), "activated") == 1;
    }));
    TestWindow popup({50, 50}, &first.native(), WindowKind::popup);
    popup.unnoted = kMoves;
    popup.show();
    test::click(popup.native(), {5, 5});
    EXPECT_EQ(popup.takeEvents(), (Events{"down 1 5,5", "up 1 5,5"}));
    EXPECT_EQ(first.takeEvents(), Events());
    TestWindow second;
    second.unnoted = kMoves;
    second.native().show(true);
    EXPECT_TRUE(test::pumpUntil([&] { return first.takeEvents() == Events{"deactivated"}; }));
    second.native().close();
    first.native().activate();
    EXPECT_TRUE(test::pumpUntil([&] { return first.takeEvents() == Events{"activated"}; }));
}
