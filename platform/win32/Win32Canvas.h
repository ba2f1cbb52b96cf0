// A canvas on a back buffer: video pictures, lines and ellipses by GDI, fills, images with
// transparency, paths, stills and text by the raster canvas.
#pragma once

#include "platform/Color.h"
#include "platform/raster/PixelScale.h"
#include "platform/raster/RasterCanvas.h"
#include "platform/win32/Win32BackBuffer.h"

namespace platform::win32 {

class Win32Canvas final : public raster::RasterCanvas {
public:
    /// The parts are not owned and must outlive the canvas.
    Win32Canvas(const Win32BackBuffer& target, raster::TextPainter& text, const Rect& clip,
                const raster::PixelScale& scale);

    void fillRect(const Rect& rect, Color color) override;
    void fillFrame(const Rect& rect, const Rect& widths, Color color) override;
    void drawBitmap(const Bitmap& bitmap, const Rect& source, const Rect& target) override;
    void drawFrame(const FrameBuffer& frame, const Rect& target) override;
    void drawFrameSmoothly(const FrameBuffer& frame, const Rect& target) override;
    void drawLine(Point from, Point to, Color color) override;
    void drawEllipse(const Rect& box, Color outline, Color fill) override;
    void fillPath(const Path& path, Color color) override;
    void drawStill(const Bitmap& still, const Rect& target) override;
    void drawMask(const Bitmap& mask, const Rect& source, const Rect& target, Color color) override;

private:
    void applyClip() const;

    HDC m_context;
};

} // namespace platform::win32
