// The window procedure: sorts messages by subject.
#include <set>

#include <windows.h>

#include <imm.h>

#include "platform/Event.h"
#include "platform/Guard.h"
#include "platform/win32/Win32Accessible.h"
#include "platform/win32/Win32Window.h"

namespace platform::win32 {

const wchar_t* Win32Window::registerClass(const std::wstring& name) {
    // The names live as long as the classes, until the program ends.
    static std::set<std::wstring> known;
    const auto [place, isNew] = known.insert(name);
    if (isNew) {
        WNDCLASSEXW description{};
        description.cbSize = sizeof description;
        description.style = CS_DBLCLKS;
        description.lpfnWndProc = receive;
        description.hInstance = GetModuleHandleW(nullptr);
        description.hIcon = LoadIconW(description.hInstance, MAKEINTRESOURCEW(1));
        // One for all classes; the system would make and keep another one for each.
        description.hIconSm = static_cast<HICON>(
            LoadImageW(description.hInstance, MAKEINTRESOURCEW(1), IMAGE_ICON,
                       GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), LR_SHARED));
        description.lpszClassName = place->c_str();
        RegisterClassExW(&description);
    }
    return place->c_str();
}

LRESULT CALLBACK Win32Window::receive(HWND handle, UINT message, WPARAM wide, LPARAM wideLong) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(wideLong);
        SetWindowLongPtrW(handle, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* self = reinterpret_cast<Win32Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (self != nullptr && self->m_handle) { // not before the constructor knows the handle
        // The object may be gone afterwards; it is not touched again.
        const std::optional<LRESULT> result =
            guarded("window message", std::optional<LRESULT>(),
                    [&] { return self->handleMessage(message, wide, wideLong); });
        if (result) {
            return *result;
        }
    } else if (message == WM_NCCALCSIZE) {
        return 0;
    }
    return DefWindowProcW(handle, message, wide, wideLong);
}

std::optional<LRESULT> Win32Window::handleFrame(UINT message, WPARAM wide) {
    switch (message) {
    case WM_NCCALCSIZE: // the whole window is ours to paint
    case WM_NCPAINT:
        return 0;
    case WM_NCACTIVATE: // -1: change the state, paint no frame
        return DefWindowProcW(m_handle.get(), message, wide, -1);
    case WM_ERASEBKGND:
        return 1;
    case WM_MOUSEACTIVATE:
        return m_kind == WindowKind::popup ? std::optional<LRESULT>(MA_NOACTIVATE) : std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<LRESULT> Win32Window::handleSizing(UINT message, WPARAM wide, LPARAM wideLong) {
    if (!isSizable()) {
        return std::nullopt;
    }
    switch (message) {
    case WM_NCHITTEST:
        return HTCLIENT; // it is sized outside
    case WM_WINDOWPOSCHANGED:
    case WM_ENABLE:
        followWithFrame();
        return std::nullopt;
    case WM_GETMINMAXINFO:
        limitSize(*reinterpret_cast<MINMAXINFO*>(wideLong));
        return 0;
    case WM_SIZE: {
        if (wide == SIZE_RESTORED) {
            noteSize();
        }
        Event event;
        event.kind = EventKind::resized;
        send(event);
        return 0;
    }
    default:
        return std::nullopt;
    }
}

/// What ends the window or the program.
std::optional<LRESULT> Win32Window::handleEnd(UINT message, WPARAM wide) {
    switch (message) {
    case WM_CLOSE:
        handleCloseRequest();
        return 0;
    case WM_QUERYENDSESSION:
        return TRUE;
    case WM_ENDSESSION:
        if (wide != 0) {
            m_services.endProgram();
        }
        return 0;
    case kFinishMessage:
        finish();
        return 0;
    case WM_DESTROY: // by the system, for example with the owner; our own destruction sends no
                     // messages
        m_closing = true;
        m_timers.forgetAll();
        finish();
        return 0;
    default:
        return std::nullopt;
    }
}

std::optional<LRESULT> Win32Window::handleMessage(UINT message, WPARAM wide, LPARAM wideLong) {
    switch (message) {
    case WM_PAINT:
        m_picture.handlePaint();
        return 0;
    case WM_SIZE:
        m_picture.invalidateAll();
        break;
    case WM_DPICHANGED: { // with the place for the window at the new scale
        const auto* place = reinterpret_cast<const RECT*>(wideLong);
        m_dpi = LOWORD(wide);
        rescale({place->left, place->top});
        return 0;
    }
    case WM_EXITSIZEMOVE: // maybe on another monitor
    case WM_DISPLAYCHANGE:
        refit();
        break;
    case WM_SETTINGCHANGE:
        refit();
        m_services.settingsChanged();
        break;
    case WM_TIMER:
        m_timers.handle(wide);
        return 0;
    case WM_ACTIVATE:
        handleActivation(LOWORD(wide) != WA_INACTIVE);
        return 0;
    case WM_SYSCOMMAND: // Alt alone would open a menu that a frameless window does not have
        return (wide & 0xFFF0U) == SC_KEYMENU && wideLong != VK_SPACE ? std::optional<LRESULT>(0)
                                                                      : std::nullopt;
    case WM_GETOBJECT: {
        const LRESULT answer =
            answerAccessibility(m_handle.get(), accessibleRoot(), wide, wideLong);
        return answer != 0 ? std::optional<LRESULT>(answer) : std::nullopt;
    }
    case WM_DROPFILES:
        handleDrop(reinterpret_cast<HDROP>(wide));
        return 0;
    case kPressMessage:
        if (takesInput()) {
            pressAccessible(static_cast<long>(wideLong));
        }
        return 0;
    default:
        break;
    }
    if (const std::optional<LRESULT> end = handleEnd(message, wide)) {
        return end;
    }
    if (const std::optional<LRESULT> sizing = handleSizing(message, wide, wideLong)) {
        return sizing;
    }
    const std::optional<LRESULT> frame = handleFrame(message, wide);
    return frame ? frame : m_input.handle(message, wide, wideLong);
}

} // namespace platform::win32
