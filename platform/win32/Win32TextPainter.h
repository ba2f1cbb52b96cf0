// The text of a raster canvas, drawn by GDI.
#pragma once

#include <string_view>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/FontSet.h"
#include "platform/raster/PixelScale.h"
#include "platform/raster/PixelView.h"
#include "platform/raster/TextPainter.h"
#include "platform/win32/Win32BackBuffer.h"

namespace platform::win32 {

class Win32FontSet;

/// GDI makes the edges of letters darker or lighter depending on the colours: small dark text on a
/// light background comes out a quarter lighter than on Linux, light text on a dark one a third
/// heavier. So GDI only determines how much of each pixel a letter covers, and the colour is
/// blended accordingly.
class Win32TextPainter final : public raster::TextPainter {
public:
    /// `fonts` is not owned and must outlive the painter.
    explicit Win32TextPainter(Win32FontSet& fonts) : m_fonts(fonts) {}

    void drawText(raster::PixelView target, const raster::PixelScale& scale, const Rect& clip,
                  std::u16string_view text, const Rect& box, FontHandle font, Color color,
                  TextAlign align) override;

private:
    /// Makes the mask at least `size` large, and its top left part of that size black.
    bool prepareMask(Size size);

    /// Draws into the mask, whose top left corner is at `origin` of the target. Letters are as far
    /// apart as they were measured, so that text keeps to its box and carets stand between them.
    void drawScaled(const raster::PixelScale& scale, Point origin, std::u16string_view text,
                    const Rect& box, FontHandle font, TextAlign align);

    Win32FontSet& m_fonts;
    Win32BackBuffer
        m_mask; ///< white letters on black; kept, as creating one costs more than the text
};

} // namespace platform::win32
