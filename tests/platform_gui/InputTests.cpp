#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Composition.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using platform::EventKind;
using platform::Key;
using platform::Modifiers;
using platform::MouseButton;
using test::TestWindow;
using Events = std::vector<std::string>;

TEST(Mouse, ReportsButtonsPositionsAndModifiersInOrder) {
    TestWindow window;
    window.show();
    window.unnoted.erase(EventKind::mouseMove);
    auto& input = test::input();
    input.mouse(window.native(), EventKind::mouseMove, {3, 4});
    input.mouse(window.native(), EventKind::mouseDown, {5, 6}, MouseButton::left, {.shift = true});
    input.mouse(window.native(), EventKind::mouseMove, {-20, 300});
    input.mouse(window.native(), EventKind::mouseUp, {7, 8}, MouseButton::left, {.control = true});
    input.mouse(window.native(), EventKind::mouseDown, {9, 9}, MouseButton::right);
    input.mouse(window.native(), EventKind::mouseUp, {9, 9}, MouseButton::right);
    input.wheel(window.native(), {1, 1}, -120);
    test::pump();
    Events events = window.takeEvents();
    // The system may repeat a move at the place of a button; that says nothing new.
    const Events repeated{"move 5,6 shift", "move 7,8 control", "move 9,9"};
    std::erase_if(events, [&](const std::string& event) {
        return std::count(repeated.begin(), repeated.end(), event) > 0;
    });
    EXPECT_EQ(events, (Events{"move 3,4", "down 1 5,6 shift", "move -20,300", "up 1 7,8 control",
                              "down 3 9,9", "up 3 9,9", "wheel -120"}));
}

TEST(Mouse, TellsDoubleClicksFromQuickClicks) {
    TestWindow window;
    window.show();
    test::doubleClick(window.native(), {10, 10});
    EXPECT_EQ(window.takeEvents(),
              (Events{"down 1 10,10", "up 1 10,10", "double 1 10,10", "up 1 10,10"}));
    test::click(window.native(), {10, 10});
    test::click(window.native(), {10, 10});
    EXPECT_EQ(window.takeEvents(),
              (Events{"down 1 10,10", "up 1 10,10", "down 1 10,10", "up 1 10,10"}));
}

TEST(Mouse, CapturedEventsGoToTheCapturingWindowWhereverTheyHappen) {
    TestWindow first;
    TestWindow second;
    first.native().setGeometry({100, 100, 300, 200});
    second.native().setGeometry({400, 150, 600, 250});
    first.show();
    second.show();
    first.native().input().setCapture();
    test::drag(second.native(), {{5, 5}, {6, 7}});
    EXPECT_EQ(second.takeEvents(), Events());
    EXPECT_EQ(first.takeEvents(), (Events{"down 1 305,55", "up 1 306,57"}));
    first.native().input().releaseCapture();
    test::click(second.native(), {5, 5});
    EXPECT_EQ(first.takeEvents(), Events());
    EXPECT_EQ(second.takeEvents(), (Events{"down 1 5,5", "up 1 5,5"}));
}

TEST(Mouse, ALostCaptureIsReportedOnceAndAReleasedOneNever) {
    TestWindow first;
    TestWindow second;
    first.show();
    second.show();
    platform::NativeWindow& own = first.native();
    const std::tuple<const char*, std::function<void()>, bool> cases[] = {
        {"another window captures", [&] { second.native().input().setCapture(); }, true},
        {"disabled", [&] { own.setEnabled(false); }, true},
        {"hidden", [&] { own.show(false); }, true},
        {"released", [&] { own.input().releaseCapture(); }, false},
        {"captured again", [&] { own.input().setCapture(); }, false},
    };
    for (const auto& [how, lose, isLost] : cases) {
        own.setEnabled(true);
        first.show();
        own.input().setCapture();
        lose();
        test::pump();
        EXPECT_EQ(first.takeEvents(), isLost ? Events{"captureLost"} : Events{}) << how;
        own.input().releaseCapture();
        second.native().input().releaseCapture();
    }
}

TEST(Mouse, AMoveOfTheWindowEndsWithTheCapture) {
    TestWindow first;
    TestWindow second;
    first.native().setGeometry({100, 100, 300, 200});
    first.show();
    second.show();
    first.native().input().beginMove();
    second.native().input().setCapture();
    second.native().input().releaseCapture();
    test::input().mouse(first.native(), EventKind::mouseMove, {50, 60});
    test::pump();
    EXPECT_EQ(first.native().geometry().topLeft(), (platform::Point{100, 100}));
}

TEST(Composition, EndsTheFormerTextBeforeTheCommittedAndTheNewOne) {
    const std::tuple<platform::Composition, std::vector<std::u16string>> reports[] = {
        {{u"", u""}, {}},
        {{u"ka", u""}, {u"?ka"}},
        {{u"kana", u""}, {u"?kana"}},
        {{u"s", u"KANA"}, {u"?", u"KANA", u"?s"}},
        {{u"", u"S"}, {u"?", u"S"}},
        {{u"", u"x"}, {u"x"}},
        {{u"t", u""}, {u"?t"}},
        {{u"", u""}, {u"?"}},
    };
    bool hasPreedit = false;
    std::vector<std::u16string> sent;
    bool lives = true;
    const auto send = [&](const platform::Event& event) {
        sent.push_back((event.kind == EventKind::textPreedit ? u"?" : u"") + event.text);
        return lives;
    };
    for (const auto& [report, expected] : reports) {
        platform::sendComposition(report, {}, hasPreedit, send);
        EXPECT_EQ(std::exchange(sent, {}), expected);
    }
    lives = false;
    platform::sendComposition({u"a", u"b"}, {}, hasPreedit, send);
    EXPECT_EQ(sent, std::vector<std::u16string>{u"?"}) << "the window went";
}

TEST(Keyboard, ReportsKeysModifiersAndTextApart) {
    const struct {
        const char* what;
        Key key;
        std::u16string text;
        Modifiers modifiers;
        const char* noted; ///< of the modifiers
        const char* typed; ///< empty: nothing
    } cases[] = {
        {"a letter", Key::a, u"a", {}, "", "a"},
        {"an accented letter", Key::other, u"\u00e9", {}, "", "\u00e9"},
        {"outside the basic plane", Key::other, u"\U0001F600", {}, "", "\U0001F600"},
        {"a shortcut types nothing", Key::c, u"\x03", {.control = true}, " control", ""},
        {"nor does a mnemonic", Key::x, u"x", {.alt = true}, " alt", ""},
        {"AltGr types", Key::other, u"@", {.control = true, .alt = true}, " control alt", "@"},
        {"Enter is no text", Key::enter, u"\r", {}, "", ""},
        {"nor is Tab", Key::tab, u"\t", {.shift = true}, " shift", ""},
        {"nor Delete", Key::del, u"\x7f", {}, "", ""},
        {"Space is", Key::space, u" ", {}, "", " "},
        {"an arrow", Key::left, u"", {}, "", ""},
    };
    TestWindow window;
    window.show();
    for (const auto& c : cases) {
        const std::string number = std::to_string(static_cast<int>(c.key));
        Events expected{"keyDown " + number + c.noted};
        if (*c.typed != '\0') {
            expected.push_back(std::string("text '") + c.typed + "'" + c.noted);
        }
        test::input().key(window.native(), EventKind::keyDown, c.key, c.text, c.modifiers);
        test::pump();
        EXPECT_EQ(window.takeEvents(), expected) << c.what;
        test::input().key(window.native(), EventKind::keyUp, c.key, {}, {});
        test::pump();
        EXPECT_EQ(window.takeEvents(), Events{"keyUp " + number}) << c.what;
    }
}

TEST(DroppedFiles, GoToAWindowThatTakesThem) {
    const std::vector<std::string> files{"/a b.mov", "/Gr\xC3\xBC\xC3\x9F/%41#.mp4"};
    TestWindow window;
    window.show();
    test::input().dropFiles(window.native(), files);
    test::pump();
    EXPECT_EQ(window.takeEvents(), Events()) << "not asked for";
    window.native().setTakesFiles(true);
    test::input().dropFiles(window.native(), files);
    test::pump();
    EXPECT_EQ(window.takeEvents(), Events{"files " + files[0] + " " + files[1]});
    window.native().setEnabled(false);
    test::input().dropFiles(window.native(), files);
    test::pump();
    EXPECT_EQ(window.takeEvents(), Events());
}

TEST(DisabledWindow, TakesNoInput) {
    TestWindow window;
    window.show();
    window.native().setEnabled(false);
    test::click(window.native(), {5, 5});
    test::press(window.native(), Key::enter);
    test::type(window.native(), u"ab");
    test::input().wheel(window.native(), {5, 5}, 120);
    test::input().commit(window.native(), u"c");
    test::input().requestClose(window.native());
    test::pump();
    EXPECT_EQ(window.takeEvents(), Events());
    window.native().setEnabled(true);
    test::click(window.native(), {5, 5});
    EXPECT_EQ(window.takeEvents(), (Events{"down 1 5,5", "up 1 5,5"}));
}

TEST(Input, OutlivesHandlersAndPaintersThatThrow) {
    TestWindow window;
    window.show();
    bool throws = true;
    window.answer = [](const platform::Event&) -> bool { throw std::runtime_error("handler"); };
    window.paint = [&](platform::Canvas&) {
        if (throws) {
            throw std::runtime_error("painter");
        }
    };
    testing::internal::CaptureStderr();
    test::click(window.native(), {5, 5});
    window.native().picture().invalidate({0, 0, 9, 9});
    test::pump();
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_NE(errors.find("handler"), std::string::npos);
    EXPECT_NE(errors.find("painter"), std::string::npos);
    EXPECT_EQ(window.takeEvents(), (Events{"down 1 5,5", "up 1 5,5"}));
    throws = false;
    window.native().picture().invalidate({0, 0, 9, 9});
    test::pump();
    EXPECT_EQ(window.takePaints().size(), 2U);
    window.answer = nullptr;
}
