#include "platform/win32/Win32WindowPicture.h"

#include "platform/Guard.h"
#include "platform/Window.h"
#include "platform/win32/Win32Canvas.h"
#include "platform/win32/Win32FrameBuffer.h"
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

Size Win32WindowPicture::clientSize() const {
    if (IsIconic(m_window.handle()) != 0) { // has none then
        return m_back.size();
    }
    RECT rect{};
    GetClientRect(m_window.handle(), &rect);
    return {rect.right, rect.bottom};
}

Rect Win32WindowPicture::content() const {
    const Size size = m_window.contentSize();
    return {0, 0, size.width, size.height};
}

void Win32WindowPicture::invalidateAll() {
    invalidate(content());
}

void Win32WindowPicture::invalidate(const Rect& dirty) {
    const Rect visible = dirty.intersected(content());
    if (visible.isEmpty() || m_window.isClosing()) {
        return;
    }
    m_dirty.add(visible);
    if (IsIconic(m_window.handle()) != 0) {
        return; // painted once it is restored
    }
    const RECT native = toNative(
        raster::PixelScale(m_window.scale(), content().size(), clientSize()).rect(visible));
    InvalidateRect(m_window.handle(), &native, FALSE);
}

void Win32WindowPicture::repaintNow() {
    if (IsWindowVisible(m_window.handle()) != 0) {
        UpdateWindow(m_window.handle());
    } else {
        paintDirty();
    }
}

void Win32WindowPicture::resizeBack() {
    const Size client = clientSize();
    const double scale = m_window.scale();
    if (m_back.size() == client && m_scale.factor() == scale) {
        return;
    }
    m_scale = {scale, content().size(), client};
    m_back.resize(client);
    m_dirty.clear();
    m_dirty.add(content());
}

void Win32WindowPicture::paintDirty() {
    if (m_window.isClosing()) {
        return;
    }
    resizeBack();
    if (m_back.context() == nullptr) {
        return;
    }
    for (const Rect& rect : m_dirty.take()) {
        Win32Canvas canvas(m_back, *m_window.services().text, rect, m_scale);
        guardedRun("painting", [&] { m_window.events().onPaint(canvas, canvas.clip()); });
    }
    SelectClipRgn(m_back.context(), nullptr);
}

void Win32WindowPicture::handlePaint() {
    // Before painting: what is invalidated meanwhile must cause a paint of its own.
    const PaintRequest request(m_window.handle());
    paintDirty();
    const RECT& rect = request.rect();
    if (m_back.context() != nullptr) {
        BitBlt(request.context(), rect.left, rect.top, rect.right - rect.left,
               rect.bottom - rect.top, m_back.context(), rect.left, rect.top, SRCCOPY);
    }
}

Bitmap Win32WindowPicture::snapshot() {
    m_dirty.add(content());
    paintDirty();
    return m_back.copy();
}

FrameBufferResult Win32WindowPicture::createFrameBuffer(Size size) {
    return makeFrameBuffer(m_window.handle(), size);
}

} // namespace platform::win32
