// The text of a raster canvas, drawn by QPainter.
#pragma once

#include <string_view>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/FontSet.h"
#include "platform/raster/PixelScale.h"
#include "platform/raster/PixelView.h"
#include "platform/raster/TextPainter.h"

namespace platform::qt {

class QtFontSet;

class QtTextPainter final : public raster::TextPainter {
public:
    /// `fonts` is not owned and must outlive the painter.
    explicit QtTextPainter(const QtFontSet& fonts) : m_fonts(fonts) {}

    void drawText(raster::PixelView target, const raster::PixelScale& scale, const Rect& clip,
                  std::u16string_view text, const Rect& box, FontHandle font, Color color,
                  TextAlign align) override;

private:
    const QtFontSet& m_fonts;
};

} // namespace platform::qt
