// A canvas on a back buffer: video pictures, lines, ellipses and text by GDI, fills and images with
// transparency by the raster canvas.
#pragma once

#include "platform/raster/RasterCanvas.h"
#include "platform/win32/Win32BackBuffer.h"
#include "platform/win32/Win32FontSet.h"

namespace platform::win32 {

/// Draws text of the raster canvas's kind on the back buffer's context.
class Win32TextPainter final : public raster::TextPainter {
public:
    /// Neither is owned.
    Win32TextPainter(HDC context, const Win32FontSet& fonts) : m_context(context), m_fonts(fonts) {}

    void drawText(raster::PixelView target, const Rect& clip, std::u16string_view text,
                  const Rect& box, FontHandle font, Color color, TextAlign align) override;

private:
    HDC m_context;
    const Win32FontSet& m_fonts;
};

class Win32Canvas final : public raster::RasterCanvas {
public:
    /// The parts are not owned and must outlive the canvas.
    Win32Canvas(const Win32BackBuffer& target, Win32TextPainter& text, const Rect& clip);

    void fillRect(const Rect& rect, Color color) override;
    void drawBitmap(const Bitmap& bitmap, const Rect& source, const Rect& target) override;
    void drawFrame(const FrameBuffer& frame, const Rect& target) override;
    void drawLine(Point from, Point to, Color color) override;
    void drawEllipse(const Rect& box, Color outline, Color fill) override;

private:
    void applyClip() const;

    HDC m_context;
};

} // namespace platform::win32
