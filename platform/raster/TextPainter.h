// How a RasterCanvas gets its text: the back end draws it with the system's own fonts.
#pragma once

#include <string_view>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/FontSet.h"
#include "platform/raster/PixelScale.h"
#include "platform/raster/PixelView.h"

namespace platform::raster {

/// UI thread only.
class TextPainter {
public:
    virtual ~TextPainter() = default;
    /// One line of text on `target`, centred from top to bottom in `box`, which is in layout
    /// pixels; pixels outside `clip` (which lies inside both `target` and `box`) stay as they are.
    virtual void drawText(PixelView target, const PixelScale& scale, const Rect& clip,
                          std::u16string_view text, const Rect& box, FontHandle font, Color color,
                          TextAlign align) = 0;
};

} // namespace platform::raster
