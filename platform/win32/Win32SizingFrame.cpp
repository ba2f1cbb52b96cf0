#include "platform/win32/Win32SizingFrame.h"

#include <windowsx.h>

namespace platform::win32 {
namespace {

constexpr const wchar_t* kClassName = L"QuorvelSizingFrame";
constexpr BYTE kUnseen = 1; ///< of 255; a window without any opacity takes no presses

bool canBeSized(HWND window) {
    return IsWindowVisible(window) != 0 && IsIconic(window) == 0 && IsZoomed(window) == 0 &&
           IsWindowEnabled(window) != 0;
}

const wchar_t* cursorOf(LRESULT code) {
    switch (code) {
    case HTLEFT:
    case HTRIGHT:
        return IDC_SIZEWE;
    case HTTOP:
    case HTBOTTOM:
        return IDC_SIZENS;
    case HTTOPLEFT:
    case HTBOTTOMRIGHT:
        return IDC_SIZENWSE;
    default:
        return IDC_SIZENESW;
    }
}

/// Of the screen.
POINT pointerPlace() {
    POINT at{};
    GetCursorPos(&at);
    return at;
}

} // namespace

Win32SizingFrame::~Win32SizingFrame() {
    if (m_handle) {
        SetWindowLongPtrW(m_handle.get(), GWLP_USERDATA, 0);
    }
}

bool Win32SizingFrame::create() {
    if (m_handle) {
        return true;
    }
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = receive;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    description.lpszClassName = kClassName;
    RegisterClassExW(&description); // fails once it is registered
    m_handle.reset(CreateWindowExW(WS_EX_LAYERED | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, kClassName,
                                   L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                   description.hInstance, nullptr));
    if (m_handle) {
        SetWindowLongPtrW(m_handle.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetLayeredWindowAttributes(m_handle.get(), 0, kUnseen, LWA_ALPHA);
    }
    return m_handle.get() != nullptr;
}

void Win32SizingFrame::follow(HWND sized, int depth) {
    m_sized = sized;
    if (canBeSized(sized) && create()) {
        RECT place{};
        GetWindowRect(sized, &place);
        surround(place, depth);
    } else if (m_handle) {
        ShowWindow(m_handle.get(), SW_HIDE);
    }
}

/// Right behind the window that is sized, so that it covers no other of the program's.
void Win32SizingFrame::surround(const RECT& place, int depth) {
    const SIZE size{place.right - place.left + 2 * depth, place.bottom - place.top + 2 * depth};
    if (size.cx != m_size.cx || size.cy != m_size.cy || depth != m_depth) {
        m_size = size;
        m_depth = depth;
        UniqueRegion border(CreateRectRgn(0, 0, size.cx, size.cy));
        const UniqueRegion content(CreateRectRgn(depth, depth, size.cx - depth, size.cy - depth));
        CombineRgn(border.get(), border.get(), content.get(), RGN_DIFF);
        if (SetWindowRgn(m_handle.get(), border.get(), FALSE) != 0) {
            border.release(); // the window's from here on
        }
    }
    SetWindowPos(m_handle.get(), m_sized, place.left - depth, place.top - depth, size.cx, size.cy,
                 SWP_NOACTIVATE | SWP_NOOWNERZORDER | SWP_SHOWWINDOW);
}

LRESULT Win32SizingFrame::codeAt(POINT at) const {
    constexpr LRESULT kCodes[3][3] = {{HTTOPLEFT, HTTOP, HTTOPRIGHT},
                                      {HTLEFT, HTNOWHERE, HTRIGHT},
                                      {HTBOTTOMLEFT, HTBOTTOM, HTBOTTOMRIGHT}};
    RECT place{};
    GetWindowRect(m_handle.get(), &place);
    const LONG corner = 3 * m_depth;
    const auto third = [corner](LONG value, LONG begin, LONG end) {
        return value < begin + corner ? 0 : value >= end - corner ? 2 : 1;
    };
    return kCodes[third(at.y, place.top, place.bottom)][third(at.x, place.left, place.right)];
}

/// The system sizes the window as if it had the frame itself.
void Win32SizingFrame::press(POINT at) const {
    HWND sized = m_sized; // what follows may end this object
    const LRESULT code = codeAt(at);
    ReleaseCapture();
    SetForegroundWindow(sized);
    SendMessageW(sized, WM_NCLBUTTONDOWN, static_cast<WPARAM>(code), MAKELPARAM(at.x, at.y));
}

LRESULT CALLBACK Win32SizingFrame::receive(HWND handle, UINT message, WPARAM wide,
                                           LPARAM wideLong) {
    const auto* self =
        reinterpret_cast<const Win32SizingFrame*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (self == nullptr) {
        return DefWindowProcW(handle, message, wide, wideLong);
    }
    switch (message) {
    case WM_SETCURSOR:
        SetCursor(LoadCursorW(nullptr, cursorOf(self->codeAt(pointerPlace()))));
        return TRUE;
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_LBUTTONDOWN: {
        POINT at{GET_X_LPARAM(wideLong), GET_Y_LPARAM(wideLong)};
        ClientToScreen(handle, &at);
        self->press(at);
        return 0;
    }
    case WM_DPICHANGED: // its size follows that of the window
        return 0;
    default:
        return DefWindowProcW(handle, message, wide, wideLong);
    }
}

} // namespace platform::win32
