// Painting of a window: what changed is drawn into a picture that is kept, and the system's request
// is answered from the picture.
#include "platform/Guard.h"
#include "platform/win32/Win32Canvas.h"
#include "platform/win32/Win32Window.h"

namespace platform::win32 {

namespace {

RECT toNative(const Rect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

/// The system's request to paint, for one scope.
class PaintRequest {
public:
    explicit PaintRequest(HWND window) : m_window(window) { BeginPaint(window, &m_request); }
    ~PaintRequest() { EndPaint(m_window, &m_request); }
    PaintRequest(const PaintRequest&) = delete;
    PaintRequest& operator=(const PaintRequest&) = delete;

    [[nodiscard]] HDC context() const { return m_request.hdc; }
    [[nodiscard]] const RECT& rect() const { return m_request.rcPaint; }

private:
    HWND m_window;
    PAINTSTRUCT m_request{};
};

} // namespace

Rect Win32Window::clientRect() const {
    if (IsIconic(m_handle.get()) != 0) { // has none then
        return {0, 0, m_back.size().width, m_back.size().height};
    }
    RECT rect{};
    GetClientRect(m_handle.get(), &rect);
    return {rect.left, rect.top, rect.right, rect.bottom};
}

void Win32Window::invalidate(const Rect& dirty) {
    const Rect visible = dirty.intersected(clientRect());
    if (visible.isEmpty() || m_closing) {
        return;
    }
    m_dirty.add(visible);
    if (IsIconic(m_handle.get()) != 0) {
        return; // painted once it comes up
    }
    const RECT native = toNative(visible);
    InvalidateRect(m_handle.get(), &native, FALSE);
}

void Win32Window::repaintNow() {
    if (IsWindowVisible(m_handle.get()) != 0) {
        UpdateWindow(m_handle.get());
    } else {
        paintDirty();
    }
}

bool Win32Window::resizeBack() {
    const Rect client = clientRect();
    if (m_back.size() == client.size()) {
        return false;
    }
    m_back.resize(client.size());
    m_dirty.clear();
    m_dirty.add(client);
    return true;
}

void Win32Window::paintDirty() {
    if (m_closing) {
        return;
    }
    resizeBack();
    if (m_back.context() == nullptr) {
        return;
    }
    for (const Rect& rect : m_dirty.take()) {
        Win32Canvas canvas(m_back, *m_services.text, rect);
        guardedRun("painting", [&] { m_events.onPaint(canvas, canvas.clip()); });
    }
    SelectClipRgn(m_back.context(), nullptr);
}

void Win32Window::paint() {
    // Begun first: what is invalidated while we paint must ask for a paint of its own.
    const PaintRequest request(m_handle.get());
    paintDirty();
    const RECT& rect = request.rect();
    if (m_back.context() != nullptr) {
        BitBlt(request.context(), rect.left, rect.top, rect.right - rect.left,
               rect.bottom - rect.top, m_back.context(), rect.left, rect.top, SRCCOPY);
    }
}

Bitmap Win32Window::snapshot() {
    m_dirty.add(clientRect());
    paintDirty();
    return m_back.copy();
}

} // namespace platform::win32
