// Input messages for tests and guided tours, given to the window procedure as the system gives
// them.
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include <shlobj.h>

#include "platform/Event.h"
#include "platform/EventLoop.h"
#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "platform/testing/TestInput.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Keys.h"
#include "platform/win32/Win32Window.h"
#include "platform/win32/Win32WindowInput.h"

namespace platform {

namespace win32 {

namespace {

constexpr std::size_t kKeyCount = 256;
constexpr BYTE kKeyDown = 0x80;

/// Sets what GetKeyState answers for this thread.
void setModifiers(Modifiers modifiers) {
    std::array<BYTE, kKeyCount> keys{};
    keys[VK_SHIFT] = modifiers.shift ? kKeyDown : BYTE{0};
    keys[VK_CONTROL] = modifiers.control ? kKeyDown : BYTE{0};
    keys[VK_MENU] = modifiers.alt ? kKeyDown : BYTE{0};
    SetKeyboardState(keys.data());
}

UINT mouseMessage(EventKind kind, MouseButton button) {
    if (kind == EventKind::mouseMove) {
        return WM_MOUSEMOVE;
    }
    const UINT down = button == MouseButton::right    ? WM_RBUTTONDOWN
                      : button == MouseButton::middle ? WM_MBUTTONDOWN
                                                      : WM_LBUTTONDOWN;
    // The messages of a button follow one another: down, up, double click.
    return down + (kind == EventKind::mouseUp ? 1U : kind == EventKind::mouseDoubleClick ? 2U : 0U);
}

LPARAM packed(POINT point) {
    return MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y));
}

/// In pixels of the screen.
POINT placeOf(NativeWindow& window, Point position) {
    const double scale = window.scale();
    return {static_cast<LONG>(std::ceil(position.x * scale)),
            static_cast<LONG>(std::ceil(position.y * scale))};
}

class Win32TestInput final : public TestInput {
public:
    explicit Win32TestInput(Gui& gui) : m_loop(gui.loop()) {
        // The display's pointer is where the last program left it, which may be where this
        // program's window appears: move it out of the way.
        SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
    }

    void mouse(NativeWindow& window, EventKind kind, Point position, MouseButton button,
               Modifiers modifiers) override;
    void wheel(NativeWindow& window, Point position, int delta, Modifiers modifiers) override;
    void key(NativeWindow& window, EventKind kind, Key key, const std::u16string& text,
             Modifiers modifiers) override;
    void preedit(NativeWindow& window, const std::u16string& text) override;
    void commit(NativeWindow& window, const std::u16string& text) override;
    void dropFiles(NativeWindow& window, const std::vector<std::string>& files) override;
    void minimize(NativeWindow& window, bool minimized) override;
    void requestClose(NativeWindow& window) override;

private:
    /// Runs `work` with the window's handle once its turn comes, if the window still lives.
    template <typename Work>
    void post(NativeWindow& window, Work work) {
        HWND handle = static_cast<Win32Window&>(window).handle();
        m_loop.post([handle, work = std::move(work)] {
            if (Win32Window::fromHandle(handle) != nullptr) {
                work(handle);
            }
        });
    }

    EventLoop& m_loop;
};

void Win32TestInput::mouse(NativeWindow& window, EventKind kind, Point position, MouseButton button,
                           Modifiers modifiers) {
    if (kind == EventKind::mouseLeave) {
        post(window, [](HWND handle) { SendMessageW(handle, WM_MOUSELEAVE, 0, 0); });
        return;
    }
    post(window, [message = mouseMessage(kind, button), at = placeOf(window, position),
                  modifiers](HWND handle) {
        setModifiers(modifiers);
        POINT point = at;
        ClientToScreen(handle, &point);
        SetCursorPos(point.x, point.y); // or the system would report that the pointer left
        // As the system does: a captured mouse belongs to the capturing window.
        HWND captured = GetCapture();
        HWND target = Win32Window::fromHandle(captured) != nullptr ? captured : handle;
        ScreenToClient(target, &point);
        SendMessageW(target, message, 0, packed(point));
    });
}

void Win32TestInput::wheel(NativeWindow& window, Point position, int delta, Modifiers modifiers) {
    post(window, [at = placeOf(window, position), delta, modifiers](HWND handle) {
        setModifiers(modifiers);
        POINT point = at;
        ClientToScreen(handle, &point);
        SendMessageW(handle, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), packed(point));
    });
}

void Win32TestInput::key(NativeWindow& window, EventKind kind, Key key, const std::u16string& text,
                         Modifiers modifiers) {
    const bool up = kind == EventKind::keyUp;
    const bool system = modifiers.alt && !modifiers.control;
    const UINT message = (system ? WM_SYSKEYDOWN : WM_KEYDOWN) + (up ? 1U : 0U);
    post(window, [=, typed = toWide(text)](HWND handle) {
        setModifiers(modifiers);
        const LPARAM details = system ? LPARAM{1} << 29 : 0; // Alt is held
        SendMessageW(handle, message, keyToNative(key), details);
        for (const wchar_t unit : typed) {
            if (Win32Window::fromHandle(handle) != nullptr) {
                SendMessageW(handle, system ? WM_SYSCHAR : WM_CHAR, unit, details);
            }
        }
    });
}

void Win32TestInput::preedit(NativeWindow& window, const std::u16string& text) {
    post(window,
         [text](HWND handle) { Win32Window::fromHandle(handle)->input().compose(text, {}); });
}

void Win32TestInput::commit(NativeWindow& window, const std::u16string& text) {
    post(window,
         [text](HWND handle) { Win32Window::fromHandle(handle)->input().compose({}, text); });
}

void Win32TestInput::dropFiles(NativeWindow& window, const std::vector<std::string>& files) {
    post(window, [files](HWND handle) {
        if ((GetWindowLongPtrW(handle, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) == 0 ||
            IsWindowEnabled(handle) == 0) {
            return; // the system drops nothing there
        }
        std::wstring names;
        for (const std::string& file : files) {
            names += wide(file) + L'\0';
        }
        names += L'\0';
        const DROPFILES head{sizeof head, {1, 1}, FALSE, TRUE};
        const std::size_t size = names.size() * sizeof(wchar_t);
        HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, sizeof head + size);
        auto* bytes = static_cast<std::byte*>(GlobalLock(memory));
        std::memcpy(bytes, &head, sizeof head);
        std::memcpy(bytes + sizeof head, names.data(), size);
        GlobalUnlock(memory);
        SendMessageW(handle, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0); // frees it
    });
}

void Win32TestInput::minimize(NativeWindow& window, bool minimized) {
    post(window, [command = minimized ? SC_MINIMIZE : SC_RESTORE](HWND handle) {
        SendMessageW(handle, WM_SYSCOMMAND, command, 0);
    });
}

void Win32TestInput::requestClose(NativeWindow& window) {
    post(window, [](HWND handle) { SendMessageW(handle, WM_CLOSE, 0, 0); });
}

} // namespace

} // namespace win32

std::unique_ptr<TestInput> createTestInput(Gui& gui) {
    return std::make_unique<win32::Win32TestInput>(gui);
}

} // namespace platform
