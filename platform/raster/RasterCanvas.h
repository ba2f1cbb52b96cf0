// A canvas that draws into memory by itself; only text comes from the back end. Used for window
// contents and snapshots wherever the system has no drawing of its own by the rules of Canvas.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "platform/raster/PathFiller.h"
#include "platform/raster/PixelScale.h"
#include "platform/raster/PixelView.h"
#include "platform/raster/TextPainter.h"

namespace platform::raster {

/// UI thread only. The pixels and the text painter are not owned and must outlive the canvas.
class RasterCanvas : public Canvas {
public:
    /// Draws on `target`, inside `clip` (in layout pixels) only.
    RasterCanvas(PixelView target, TextPainter& textPainter, const Rect& clip,
                 const PixelScale& scale = {});

    [[nodiscard]] Rect clip() const override { return m_clips.back(); }
    void pushClip(const Rect& rect) override;
    /// A pop without its push does nothing.
    void popClip() override;
    [[nodiscard]] double scale() const override { return m_scale.factor(); }
    void fillRect(const Rect& rect, Color color) override;
    void fillFrame(const Rect& rect, const Rect& widths, Color color) override;
    /// Parts of `source` outside the bitmap leave the target as it is.
    void drawBitmap(const Bitmap& bitmap, const Rect& source, const Rect& target) override;
    void drawFrame(const FrameBuffer& frame, const Rect& target) override;
    void drawFrameSmoothly(const FrameBuffer& frame, const Rect& target) override;
    void drawLine(Point from, Point to, Color color) override;
    /// A box with a side above 32767 draws nothing.
    void drawEllipse(const Rect& box, Color outline, Color fill) override;
    void fillPath(const Path& path, Color color) override;
    void drawStill(const Bitmap& still, const Rect& target) override;
    /// Draws nothing for a `source` that is not inside the mask.
    void drawMask(const Bitmap& mask, const Rect& source, const Rect& target, Color color) override;
    void drawText(std::u16string_view text, const Rect& box, FontHandle font, Color color,
                  TextAlign align) override;

protected:
    [[nodiscard]] const PixelScale& pixels() const { return m_scale; }
    /// The clip in pixels of the screen.
    [[nodiscard]] const Rect& deviceClip() const { return m_deviceClips.back(); }

private:
    // These take pixels of the screen.
    void fill(const Rect& rect, Color color);
    /// With a premultiplied pixel; `visible` lies inside the clip, or is empty.
    void fillPlain(const Rect& visible, std::uint32_t pixel);
    void fillSpan(int left, int right, int y, Color color);
    void drawThickLine(Point from, Point to, int width, std::uint32_t pixel);
    void fillEllipse(const Rect& box, int outlineWidth, Color outline, Color fill);

    PixelView m_target;
    TextPainter& m_textPainter;
    PixelScale m_scale;
    PathFiller m_pathFiller;
    std::vector<Rect> m_clips;       ///< never empty; each lies inside the one before
    std::vector<Rect> m_deviceClips; ///< the same in pixels of the screen
};

} // namespace platform::raster
