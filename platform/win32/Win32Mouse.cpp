// Mouse of a window: buttons, moves, the wheel, the capture and the pointer's picture.
#include <optional>

#include <windowsx.h>

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/WindowParts.h"
#include "platform/win32/Win32Keys.h"
#include "platform/win32/Win32Pointer.h"
#include "platform/win32/Win32Window.h"
#include "platform/win32/Win32WindowInput.h"

namespace platform::win32 {

namespace {

Event eventOf(UINT message) {
    Event event;
    event.modifiers = currentModifiers();
    event.kind = EventKind::mouseMove;
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
        event.button = MouseButton::left;
        break;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_RBUTTONDBLCLK:
        event.button = MouseButton::right;
        break;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONUP:
    case WM_MBUTTONDBLCLK:
        event.button = MouseButton::middle;
        break;
    default:
        return event;
    }
    const bool down =
        message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
    const bool up = message == WM_LBUTTONUP || message == WM_RBUTTONUP || message == WM_MBUTTONUP;
    event.kind = down ? EventKind::mouseDown
                 : up ? EventKind::mouseUp
                      : EventKind::mouseDoubleClick;
    return event;
}

} // namespace

std::optional<LRESULT> Win32WindowInput::handlePointer(UINT message, WPARAM wide, LPARAM wideLong) {
    switch (message) {
    case WM_MOUSEWHEEL:
        handleWheel(wide, wideLong);
        return 0;
    case WM_MOUSELEAVE:
        handleLeave();
        return 0;
    case WM_CAPTURECHANGED:
        m_moveGrip.reset();
        loseCapture();
        return 0;
    case WM_SETCURSOR:
        return handleSetCursor(wideLong) ? std::optional<LRESULT>(TRUE) : std::nullopt;
    default:
        break;
    }
    if (message >= WM_MOUSEFIRST && message <= WM_MBUTTONDBLCLK) {
        handleMouse(message, wideLong);
        return 0;
    }
    return std::nullopt;
}

bool Win32WindowInput::followMove(UINT message, LPARAM wideLong) {
    if (!m_moveGrip) {
        return false;
    }
    if (message != WM_MOUSEMOVE) {
        m_moveGrip.reset();
        ReleaseCapture();
        return true;
    }
    POINT point{GET_X_LPARAM(wideLong), GET_Y_LPARAM(wideLong)};
    ClientToScreen(m_window.handle(), &point);
    SetWindowPos(m_window.handle(), nullptr, point.x - m_moveGrip->x, point.y - m_moveGrip->y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    return true;
}

void Win32WindowInput::handleMouse(UINT message, LPARAM wideLong) {
    if (!m_window.isEnabled() || followMove(message, wideLong)) {
        return;
    }
    if (!m_tracksLeave) {
        TRACKMOUSEEVENT request{};
        request.cbSize = sizeof request;
        request.dwFlags = TME_LEAVE;
        request.hwndTrack = m_window.handle();
        m_tracksLeave = TrackMouseEvent(&request) != 0;
    }
    Event event = eventOf(message);
    event.position = m_window.toLayout(POINT{GET_X_LPARAM(wideLong), GET_Y_LPARAM(wideLong)});
    m_window.send(event);
}

void Win32WindowInput::handleWheel(WPARAM wide, LPARAM wideLong) {
    POINT point{GET_X_LPARAM(wideLong), GET_Y_LPARAM(wideLong)};
    // The system may send it to the window with the focus; it belongs to the one under the pointer.
    Win32Window* target = &m_window;
    if (!m_window.screenGeometry().contains({point.x, point.y})) {
        Win32Window* below = Win32Window::fromHandle(WindowFromPoint(point));
        target = below != nullptr ? below : &m_window;
    }
    if (!target->isEnabled()) {
        return;
    }
    ScreenToClient(target->handle(), &point);
    Event event;
    event.kind = EventKind::mouseWheel;
    event.position = target->toLayout(point);
    event.wheelDelta = GET_WHEEL_DELTA_WPARAM(wide);
    event.modifiers = currentModifiers();
    target->send(event);
}

void Win32WindowInput::handleLeave() {
    m_tracksLeave = false;
    Event event;
    event.kind = EventKind::mouseLeave;
    event.position = {-1, -1};
    m_window.send(event);
}

void Win32WindowInput::setCapture() {
    if (m_captured) {
        return;
    }
    SetCapture(m_window.handle());
    m_captured = true;
}

void Win32WindowInput::releaseCapture() {
    if (m_captured) {
        m_captured = false; // first: the system reports the end of the capture at once
        ReleaseCapture();
    }
}

void Win32WindowInput::loseCapture() {
    if (!m_captured) {
        return;
    }
    m_captured = false;
    if (GetCapture() == m_window.handle()) {
        ReleaseCapture();
    }
    Event event;
    event.kind = EventKind::captureLost;
    m_window.send(event);
}

void Win32WindowInput::setPointer(PointerShape shape) {
    if (m_pointer == shape) {
        return;
    }
    m_pointer = shape;
    POINT point{};
    if (GetCursorPos(&point) != 0 && WindowFromPoint(point) == m_window.handle()) {
        SetCursor(m_picture.cursor(shape, m_window.scale()));
    }
}

bool Win32WindowInput::handleSetCursor(LPARAM details) {
    if (LOWORD(details) != HTCLIENT) {
        return false;
    }
    SetCursor(m_picture.cursor(m_pointer, m_window.scale()));
    return true;
}

void Win32WindowInput::beginMove() {
    HWND window = m_window.handle();
    loseCapture();
    if (Win32Window::fromHandle(window) != &m_window) {
        return;
    }
    POINT point{};
    GetCursorPos(&point);
    if (GetAsyncKeyState(VK_LBUTTON) >= 0) {
        // For the system no button is held, and it would wait for the release for ever: follow the
        // pointer here.
        const Rect place = m_window.screenGeometry();
        m_moveGrip = Point{point.x - place.left, point.y - place.top};
        SetCapture(window);
        return;
    }
    // As if the caption were pressed: the system moves the window until the button is released.
    SendMessageW(window, WM_NCLBUTTONDOWN, HTCAPTION, MAKELPARAM(point.x, point.y));
}

} // namespace platform::win32
