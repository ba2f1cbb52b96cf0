#include "platform/win32/Win32Canvas.h"

#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"
#include "platform/win32/Handles.h"
#include "platform/win32/Win32FrameBuffer.h"

namespace platform::win32 {

namespace {

COLORREF toGdi(Color color) {
    return RGB(redOf(color), greenOf(color), blueOf(color));
}

void clipTo(HDC context, const Rect& rect) {
    SelectClipRgn(context, nullptr);
    IntersectClipRect(context, rect.left, rect.top, rect.right, rect.bottom);
}

} // namespace

Win32Canvas::Win32Canvas(const Win32BackBuffer& target, raster::TextPainter& text, const Rect& clip,
                         const raster::PixelScale& scale)
    : RasterCanvas(target.pixels(), text, clip, scale), m_context(target.context()) {}

void Win32Canvas::applyClip() const {
    clipTo(m_context, deviceClip());
}

void Win32Canvas::fillRect(const Rect& rect, Color color) {
    GdiFlush();
    RasterCanvas::fillRect(rect, color);
}

void Win32Canvas::fillFrame(const Rect& rect, const Rect& widths, Color color) {
    GdiFlush();
    RasterCanvas::fillFrame(rect, widths, color);
}

void Win32Canvas::drawBitmap(const Bitmap& bitmap, const Rect& source, const Rect& target) {
    GdiFlush();
    RasterCanvas::drawBitmap(bitmap, source, target);
}

void Win32Canvas::drawFrame(const FrameBuffer& frame, const Rect& target) {
    const auto* native = dynamic_cast<const Win32FrameBuffer*>(&frame);
    if (native == nullptr) { // a picture from elsewhere
        GdiFlush();
        RasterCanvas::drawFrame(frame, target);
        return;
    }
    applyClip();
    // Without this mode a reduced picture is darkened by the pixels that are left out.
    SetStretchBltMode(m_context, COLORONCOLOR);
    const Rect place = pixels().rect(target);
    StretchBlt(m_context, place.left, place.top, place.width(), place.height(), native->context(),
               0, 0, frame.size().width, frame.size().height, SRCCOPY);
}

void Win32Canvas::drawFrameSmoothly(const FrameBuffer& frame, const Rect& target) {
    GdiFlush();
    RasterCanvas::drawFrameSmoothly(frame, target);
}

void Win32Canvas::drawLine(Point from, Point to, Color color) {
    if (!pixels().isOne()) {
        GdiFlush();
        RasterCanvas::drawLine(from, to, color);
        return;
    }
    applyClip();
    const Selection pen(m_context, GetStockObject(DC_PEN));
    SetDCPenColor(m_context, toGdi(color));
    MoveToEx(m_context, from.x, from.y, nullptr);
    LineTo(m_context, to.x, to.y);
}

void Win32Canvas::drawEllipse(const Rect& box, Color outline, Color fill) {
    if (!pixels().isOne()) {
        GdiFlush();
        RasterCanvas::drawEllipse(box, outline, fill);
        return;
    }
    applyClip();
    const Selection pen(m_context, GetStockObject(DC_PEN));
    const Selection brush(m_context, GetStockObject(DC_BRUSH));
    SetDCPenColor(m_context, toGdi(outline));
    SetDCBrushColor(m_context, toGdi(fill));
    Ellipse(m_context, box.left, box.top, box.right, box.bottom);
}

void Win32Canvas::fillPath(const Path& path, Color color) {
    GdiFlush();
    RasterCanvas::fillPath(path, color);
}

void Win32Canvas::drawMask(const Bitmap& mask, const Rect& source, const Rect& target,
                           Color color) {
    GdiFlush();
    RasterCanvas::drawMask(mask, source, target, color);
}

void Win32Canvas::drawStill(const Bitmap& still, const Rect& target) {
    GdiFlush();
    RasterCanvas::drawStill(still, target);
}

} // namespace platform::win32
