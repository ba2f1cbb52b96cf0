// What a window, a control or a zone draws on. Coordinates are layout pixels, which may be several
// or a part of the screen's; everything is cut to the current clip rectangle. Only text, paths,
// stills and masks of another size are smoothed, and all but text by our own arithmetic, so that
// pixels are the same everywhere.
#pragma once

#include <string_view>

#include "platform/Bitmap.h"
#include "platform/Color.h"
#include "platform/FontSet.h"
#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"
#include "platform/Path.h"

namespace platform {

enum class TextAlign { left, center, right };

/// UI thread only; valid during the paint call that handed it out.
class Canvas {
public:
    virtual ~Canvas() = default;

    [[nodiscard]] virtual Rect clip() const = 0;
    /// Narrows the clip to `rect`; each push needs one pop. ClipScope pairs them.
    virtual void pushClip(const Rect& rect) = 0;
    virtual void popClip() = 0;
    /// How many pixels of the screen one layout pixel is wide.
    [[nodiscard]] virtual double scale() const { return 1; }

    /// Fills with `color`, blended by its alpha. What is one or two pixels thin has whole pixels of
    /// the screen, the same number everywhere.
    virtual void fillRect(const Rect& rect, Color color) = 0;
    /// Stretches `source` of the bitmap onto `target`, nearest pixel centre, blended by alpha.
    virtual void drawBitmap(const Bitmap& bitmap, const Rect& source, const Rect& target) = 0;
    /// Stretches the whole frame buffer onto `target`: target column x shows source column
    /// ((2x + 1) * sourceWidth) / (2 * targetWidth), rows alike.
    virtual void drawFrame(const FrameBuffer& frame, const Rect& target) = 0;
    /// The same, smoothly: as drawStill.
    virtual void drawFrameSmoothly(const FrameBuffer& frame, const Rect& target) = 0;
    /// A frame inside the edges of `rect`, `widths` thick on each side.
    virtual void fillFrame(const Rect& rect, const Rect& widths, Color color) = 0;
    /// A line one pixel wide; `from` is drawn, `to` is not.
    virtual void drawLine(Point from, Point to, Color color) = 0;
    /// An ellipse that fills `box` (right and bottom edges excluded), outline one pixel wide.
    virtual void drawEllipse(const Rect& box, Color outline, Color fill) = 0;
    /// The inside of all parts, with smooth edges, blended by alpha. Parts that overlap and run
    /// round in opposite ways cancel out.
    virtual void fillPath(const Path& path, Color color) = 0;
    /// Stretches the whole bitmap onto `target`, smoothly, blended by alpha. Much reduced ones take
    /// time by their own size.
    virtual void drawStill(const Bitmap& still, const Rect& target) = 0;
    /// Lays `color` on `target`, by the alpha that `source` of the mask has there: in its own size,
    /// from the top left, where the screen's is that to a pixel, else smoothly stretched. A
    /// `source` that is not all in the mask draws nothing.
    virtual void drawMask(const Bitmap& mask, const Rect& source, const Rect& target,
                          Color color) = 0;
    /// One line of text, centred from top to bottom in `box` and clipped to it.
    virtual void drawText(std::u16string_view text, const Rect& box, FontHandle font, Color color,
                          TextAlign align) = 0;
};

/// Narrows a canvas's clip for its own lifetime.
class ClipScope {
public:
    ClipScope(Canvas& canvas, const Rect& rect) : m_canvas(canvas) { canvas.pushClip(rect); }
    ~ClipScope() { m_canvas.popClip(); }
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;

private:
    Canvas& m_canvas;
};

} // namespace platform
