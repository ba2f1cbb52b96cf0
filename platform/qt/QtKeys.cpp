#include "platform/qt/QtKeys.h"

namespace platform::qt {

namespace {

struct KeyPair {
    Qt::Key qt;
    Key ours;
};

/// The first entry of a key of ours is what keyToQt gives.
constexpr KeyPair kKeys[] = {
    {Qt::Key_Left, Key::left},
    {Qt::Key_Right, Key::right},
    {Qt::Key_Up, Key::up},
    {Qt::Key_Down, Key::down},
    {Qt::Key_Home, Key::home},
    {Qt::Key_End, Key::end},
    {Qt::Key_PageUp, Key::pageUp},
    {Qt::Key_PageDown, Key::pageDown},
    {Qt::Key_Tab, Key::tab},
    {Qt::Key_Backtab, Key::tab}, // Shift+Tab; the modifier distinguishes them
    {Qt::Key_Return, Key::enter},
    {Qt::Key_Enter, Key::enter},
    {Qt::Key_Escape, Key::escape},
    {Qt::Key_Space, Key::space},
    {Qt::Key_Backspace, Key::backspace},
    {Qt::Key_Delete, Key::del},
    {Qt::Key_Insert, Key::insert},
    {Qt::Key_Menu, Key::menu},
    {Qt::Key_BracketLeft, Key::openBracket},
    {Qt::Key_BracketRight, Key::closeBracket},
    {Qt::Key_Plus, Key::plus},
    {Qt::Key_Equal, Key::plus}, // one key of many layouts
    {Qt::Key_Minus, Key::minus},
};

/// Keys that both sides number in the same order.
struct KeyRange {
    Qt::Key qt;
    Key first;
    Key last;
};

constexpr KeyRange kRanges[] = {
    {Qt::Key_F1, Key::f1, Key::f12},
    {Qt::Key_0, Key::digit0, Key::digit9},
    {Qt::Key_A, Key::a, Key::z},
};

} // namespace

Key keyFromQt(int qtKey) {
    for (const KeyPair& pair : kKeys) {
        if (pair.qt == qtKey) {
            return pair.ours;
        }
    }
    for (const KeyRange& range : kRanges) {
        const int ours = qtKey - range.qt + static_cast<int>(range.first);
        if (qtKey >= range.qt && ours <= static_cast<int>(range.last)) {
            return static_cast<Key>(ours);
        }
    }
    return Key::other;
}

int keyToQt(Key key) {
    for (const KeyPair& pair : kKeys) {
        if (pair.ours == key) {
            return pair.qt;
        }
    }
    for (const KeyRange& range : kRanges) {
        if (key >= range.first && key <= range.last) {
            return range.qt + static_cast<int>(key) - static_cast<int>(range.first);
        }
    }
    return Qt::Key_unknown;
}

Modifiers modifiersFromQt(Qt::KeyboardModifiers modifiers) {
    return {modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier),
            modifiers.testFlag(Qt::AltModifier)};
}

Qt::KeyboardModifiers modifiersToQt(Modifiers modifiers) {
    Qt::KeyboardModifiers result;
    result.setFlag(Qt::ShiftModifier, modifiers.shift);
    result.setFlag(Qt::ControlModifier, modifiers.control);
    result.setFlag(Qt::AltModifier, modifiers.alt);
    return result;
}

MouseButton buttonFromQt(Qt::MouseButton button) {
    switch (button) {
    case Qt::LeftButton:
        return MouseButton::left;
    case Qt::MiddleButton:
        return MouseButton::middle;
    case Qt::RightButton:
        return MouseButton::right;
    default:
        return MouseButton::none;
    }
}

Qt::MouseButton buttonToQt(MouseButton button) {
    switch (button) {
    case MouseButton::left:
        return Qt::LeftButton;
    case MouseButton::middle:
        return Qt::MiddleButton;
    case MouseButton::right:
        return Qt::RightButton;
    case MouseButton::none:
        break;
    }
    return Qt::NoButton;
}

} // namespace platform::qt
