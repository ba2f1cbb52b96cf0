// Keyboard of a window: keys, typed text and the input method.
#include "platform/win32/Win32Keys.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include <windows.h>

#include <imm.h>

#include "platform/Composition.h"
#include "platform/Geometry.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Window.h"
#include "platform/win32/Win32WindowInput.h"

namespace platform::win32 {

namespace {

struct KeyPair {
    WPARAM native;
    Key ours;
};

constexpr KeyPair kKeys[] = {
    {VK_LEFT, Key::left},      {VK_RIGHT, Key::right},       {VK_UP, Key::up},
    {VK_DOWN, Key::down},      {VK_HOME, Key::home},         {VK_END, Key::end},
    {VK_PRIOR, Key::pageUp},   {VK_NEXT, Key::pageDown},     {VK_TAB, Key::tab},
    {VK_RETURN, Key::enter},   {VK_ESCAPE, Key::escape},     {VK_SPACE, Key::space},
    {VK_BACK, Key::backspace}, {VK_DELETE, Key::del},        {VK_INSERT, Key::insert},
    {VK_APPS, Key::menu},      {VK_OEM_4, Key::openBracket}, {VK_OEM_6, Key::closeBracket},
    {VK_OEM_PLUS, Key::plus},  {VK_ADD, Key::plus},          {VK_OEM_MINUS, Key::minus},
    {VK_SUBTRACT, Key::minus},
};

/// Keys that both sides number in the same order.
struct KeyRange {
    WPARAM native;
    Key first;
    Key last;
};

constexpr KeyRange kRanges[] = {
    {VK_F1, Key::f1, Key::f12},
    {'0', Key::digit0, Key::digit9},
    {'A', Key::a, Key::z},
};

constexpr WPARAM distance(Key first, Key key) {
    return static_cast<WPARAM>(key) - static_cast<WPARAM>(first);
}

constexpr LPARAM kHeldBefore = LPARAM{1} << 30;

bool isDown(int virtualKey) {
    return (static_cast<unsigned short>(GetKeyState(virtualKey)) & 0x8000U) != 0;
}

/// The input method's context of a window for one scope.
class InputContext {
public:
    explicit InputContext(HWND window) : m_window(window), m_context(ImmGetContext(window)) {}
    ~InputContext() {
        if (m_context != nullptr) {
            ImmReleaseContext(m_window, m_context);
        }
    }
    InputContext(const InputContext&) = delete;
    InputContext& operator=(const InputContext&) = delete;

    [[nodiscard]] HIMC get() const { return m_context; }
    [[nodiscard]] std::u16string text(DWORD which) const {
        const LONG bytes = ImmGetCompositionStringW(m_context, which, nullptr, 0);
        if (bytes <= 0) {
            return {};
        }
        std::wstring result(static_cast<std::size_t>(bytes) / sizeof(wchar_t), L'\0');
        ImmGetCompositionStringW(m_context, which, result.data(), static_cast<DWORD>(bytes));
        return fromWide(result);
    }

private:
    HWND m_window;
    HIMC m_context;
};

} // namespace

Key keyFromNative(WPARAM virtualKey) {
    for (const KeyPair& pair : kKeys) {
        if (pair.native == virtualKey) {
            return pair.ours;
        }
    }
    for (const KeyRange& range : kRanges) {
        const WPARAM ours = virtualKey - range.native;
        if (virtualKey >= range.native && ours <= distance(range.first, range.last)) {
            return static_cast<Key>(static_cast<WPARAM>(range.first) + ours);
        }
    }
    return Key::other;
}

WPARAM keyToNative(Key key) {
    for (const KeyPair& pair : kKeys) {
        if (pair.ours == key) {
            return pair.native;
        }
    }
    for (const KeyRange& range : kRanges) {
        if (key >= range.first && key <= range.last) {
            return range.native + distance(range.first, key);
        }
    }
    return 0;
}

Modifiers currentModifiers() {
    return {isDown(VK_SHIFT), isDown(VK_CONTROL), isDown(VK_MENU)};
}

std::optional<LRESULT> Win32WindowInput::handleKeyboard(UINT message, WPARAM wide,
                                                        LPARAM wideLong) {
    switch (message) {
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
        return handleKey(message, wide, wideLong) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_CHAR:
        handleCharacter(static_cast<wchar_t>(wide));
        return 0;
    case WM_SYSCHAR: // a beep for every Alt and letter; Alt and Space open the system menu
        return wide != VK_SPACE ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_IME_STARTCOMPOSITION: // the edit shows the text itself
        return 0;
    case WM_IME_COMPOSITION: // else the system would send the text again as characters
        handleComposition(wideLong);
        return 0;
    case WM_IME_ENDCOMPOSITION:
        compose({}, {});
        return 0;
    default:
        return std::nullopt;
    }
}

std::optional<LRESULT> Win32WindowInput::handle(UINT message, WPARAM wide, LPARAM wideLong) {
    const std::optional<LRESULT> keyboard = handleKeyboard(message, wide, wideLong);
    return keyboard ? keyboard : handlePointer(message, wide, wideLong);
}

bool Win32WindowInput::handleKey(UINT message, WPARAM virtualKey, LPARAM details) {
    if (!m_window.isEnabled()) {
        return true;
    }
    Event event;
    const bool down = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
    event.kind = down ? EventKind::keyDown : EventKind::keyUp;
    event.key = keyFromNative(virtualKey);
    event.repeat = down && (details & kHeldBefore) != 0;
    event.modifiers = currentModifiers();
    const bool handled = m_window.send(event);
    // The system's own keys: Alt+F4 among them.
    const bool system = message == WM_SYSKEYDOWN || message == WM_SYSKEYUP;
    return handled || !system;
}

void Win32WindowInput::handleCharacter(wchar_t unit) {
    const bool control = unit < 0x20 || unit == 0x7F;
    if (!m_window.isEnabled() || control) {
        return;
    }
    const auto code = static_cast<char16_t>(unit);
    if ((code & 0xFC00U) == 0xD800U) { // the second half comes with the next message
        m_highSurrogate = code;
        return;
    }
    Event event;
    event.kind = EventKind::textInput;
    event.modifiers = currentModifiers();
    const char16_t high = std::exchange(m_highSurrogate, u'\0');
    if (high != u'\0' && (code & 0xFC00U) == 0xDC00U) {
        event.text += high;
    }
    event.text += code;
    m_window.send(event);
}

void Win32WindowInput::compose(const std::u16string& preedit, const std::u16string& committed) {
    if (!m_window.isEnabled()) {
        return;
    }
    sendComposition({preedit, committed}, currentModifiers(), m_preedit,
                    [&window = m_window, handle = m_window.handle()](const Event& event) {
                        window.send(event);
                        return Win32Window::fromHandle(handle) == &window;
                    });
}

void Win32WindowInput::handleComposition(LPARAM flags) {
    const InputContext context(m_window.handle());
    const std::u16string committed =
        (flags & GCS_RESULTSTR) != 0 ? context.text(GCS_RESULTSTR) : std::u16string();
    const std::u16string preedit =
        (flags & GCS_COMPSTR) != 0 ? context.text(GCS_COMPSTR) : std::u16string();
    compose(preedit, committed);
}

void Win32WindowInput::setTextInput(bool enabled, const Rect& caret) {
    ImmAssociateContextEx(m_window.handle(), nullptr, enabled ? IACE_DEFAULT : 0);
    const InputContext context(m_window.handle());
    if (context.get() == nullptr) {
        return;
    }
    COMPOSITIONFORM place{};
    place.dwStyle = CFS_POINT;
    const double scale = m_window.scale();
    place.ptCurrentPos = {std::lround(caret.left * scale), std::lround(caret.top * scale)};
    ImmSetCompositionWindow(context.get(), &place);
}

} // namespace platform::win32
