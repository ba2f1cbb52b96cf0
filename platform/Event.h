// Input and life-cycle events that a native window sends up to its owner.
#pragma once

#include <string>
#include <vector>

#include "platform/Geometry.h"

namespace platform {

enum class EventKind {
    mouseMove,
    mouseDown,
    mouseUp,
    mouseDoubleClick, ///< the second press of a pair; a mouseUp follows
    mouseWheel,
    mouseLeave,
    keyDown,
    keyUp,
    textInput,         ///< committed text, from the keyboard, a dead key or an input method
    textPreedit,       ///< the input method's uncommitted text; empty when there is none any more
    activated,         ///< the window got the keyboard
    deactivated,       ///< another window got it
    captureLost,       ///< the system took the mouse capture away
    resized,           ///< a window that can be sized: its size or its state has changed
    filesDropped,      ///< files or folders were dragged into the window; not while it is disabled
    appearanceChanged, ///< WindowHost::isDark() has
    timer,
    closeRequest, ///< close box, Alt+F4 or the window manager
    destroyed,    ///< the native window is gone; the last event
};

enum class MouseButton { none, left, middle, right };

/// Keys that the editor reacts to; all others arrive as `other` and, if they type, as textInput.
enum class Key {
    other,
    left,
    right,
    up,
    down,
    home,
    end,
    pageUp,
    pageDown,
    tab,
    enter,
    escape,
    space,
    backspace,
    del,
    insert,
    menu, ///< the key that opens a context menu
    openBracket,
    closeBracket,
    plus, ///< and minus: keys that type them, on Windows those that are named so, or of the keypad
    minus,
    // Function keys, digits and letters are consecutive: back ends convert them by their distance.
    // clang-format off
    f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12,
    digit0, digit1, digit2, digit3, digit4, digit5, digit6, digit7, digit8, digit9,
    a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w, x, y, z,
    // clang-format on
};

[[nodiscard]] constexpr bool isFunctionKey(Key key) {
    return key >= Key::f1 && key <= Key::f12;
}

struct Modifiers {
    bool shift = false;
    bool control = false;
    bool alt = false;
    bool operator==(const Modifiers&) const = default;
};

struct Event {
    EventKind kind = EventKind::timer;
    Point position;                         ///< mouse events: window pixels, may lie outside
    MouseButton button = MouseButton::none; ///< mouseDown, mouseUp, mouseDoubleClick
    int wheelDelta = 0;                     ///< 120 a notch, positive away from the user
    Key key = Key::other;
    bool repeat = false; ///< keyDown: the key is held
    Modifiers modifiers; ///< at the time of the event
    std::u16string text; ///< textInput, textPreedit
    unsigned timerId = 0;
    std::vector<std::string> files; ///< filesDropped: absolute paths, UTF-8
};

} // namespace platform
