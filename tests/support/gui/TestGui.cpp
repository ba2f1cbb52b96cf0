#include "tests/support/gui/TestGui.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>

namespace test {

namespace {

using platform::EventKind;
using platform::Key;
using platform::MouseButton;

constexpr auto kMaxWait = std::chrono::seconds(30);
constexpr int kPumpRounds = 5;

std::unique_ptr<platform::Gui> theGui;
std::unique_ptr<platform::TestInput> theInput;

/// Ends the window system while the program still stands: not among the static destructors.
class GuiEnd final : public testing::Environment {
public:
    void TearDown() override { endGui(); }
};
[[maybe_unused]] const testing::Environment* const kGuiEnd =
    testing::AddGlobalTestEnvironment(std::make_unique<GuiEnd>().release());

Key keyOf(char16_t c) {
    const auto from = [c](Key first, char16_t base) {
        return static_cast<Key>(static_cast<int>(first) + c - base);
    };
    if (c >= u'a' && c <= u'z') {
        return from(Key::a, u'a');
    }
    if (c >= u'0' && c <= u'9') {
        return from(Key::digit0, u'0');
    }
    return c == u' ' ? Key::space : Key::other;
}

} // namespace

platform::Gui& gui() {
    if (!theGui) {
        theGui = platform::createGui();
        if (!theGui) {
            std::fputs("no display for the tests: set QT_QPA_PLATFORM=offscreen\n", stderr);
            std::exit(EXIT_FAILURE);
        }
        theInput = platform::createTestInput(*theGui);
    }
    return *theGui;
}

platform::TestInput& input() {
    static_cast<void>(gui());
    return *theInput;
}

void endGui() {
    theInput.reset();
    theGui.reset();
}

void pump() {
    for (int round = 0; round < kPumpRounds; ++round) {
        gui().loop().processEvents(false);
    }
}

bool pumpUntil(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + kMaxWait;
    while (!done()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        gui().loop().processEvents(true);
    }
    return true;
}

void click(platform::NativeWindow& window, platform::Point position,
           platform::Modifiers modifiers) {
    input().mouse(window, EventKind::mouseMove, position, MouseButton::none, modifiers);
    input().mouse(window, EventKind::mouseDown, position, MouseButton::left, modifiers);
    input().mouse(window, EventKind::mouseUp, position, MouseButton::left, modifiers);
    pump();
}

void doubleClick(platform::NativeWindow& window, platform::Point position) {
    input().mouse(window, EventKind::mouseDown, position);
    input().mouse(window, EventKind::mouseUp, position);
    input().mouse(window, EventKind::mouseDoubleClick, position);
    input().mouse(window, EventKind::mouseUp, position);
    pump();
}

void drag(platform::NativeWindow& window, const std::vector<platform::Point>& points) {
    if (points.empty()) {
        return;
    }
    input().mouse(window, EventKind::mouseDown, points.front());
    for (const platform::Point point : points) {
        input().mouse(window, EventKind::mouseMove, point);
    }
    input().mouse(window, EventKind::mouseUp, points.back());
    pump();
}

void press(platform::NativeWindow& window, Key key, platform::Modifiers modifiers) {
    // A real space bar types a space too.
    const bool types = key == Key::space && modifiers == platform::Modifiers{};
    input().key(window, EventKind::keyDown, key, types ? u" " : u"", modifiers);
    input().key(window, EventKind::keyUp, key, {}, modifiers);
    pump();
}

void type(platform::NativeWindow& window, const std::u16string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pair = (text[i] & 0xFC00U) == 0xD800U && i + 1 < text.size();
        const std::u16string one = text.substr(i, pair ? 2 : 1);
        input().key(window, EventKind::keyDown, keyOf(one[0]), one);
        input().key(window, EventKind::keyUp, keyOf(one[0]));
        i += pair ? 1 : 0;
    }
    pump();
}

} // namespace test
