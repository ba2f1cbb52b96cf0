// The text of a raster canvas, drawn by GDI.
#pragma once

#include "platform/raster/TextPainter.h"
#include "platform/win32/Win32BackBuffer.h"

namespace platform::win32 {

class Win32FontSet;

/// GDI darkens and lightens the edges of letters by the colours involved: small dark text on a
/// light ground gets a quarter thinner than the same text on Linux, light text on a dark ground a
/// third heavier. So GDI only says how much of each pixel a letter covers; the colour is laid on by
/// that.
class Win32TextPainter final : public raster::TextPainter {
public:
    /// `fonts` is not owned and must outlive the painter.
    explicit Win32TextPainter(const Win32FontSet& fonts) : m_fonts(fonts) {}

    void drawText(raster::PixelView target, const Rect& clip, std::u16string_view text,
                  const Rect& box, FontHandle font, Color color, TextAlign align) override;

private:
    /// At least of `size`, the part of that size black.
    bool prepareMask(Size size);

    const Win32FontSet& m_fonts;
    Win32BackBuffer m_mask; ///< white letters on black; kept, as making one costs more than a text
};

} // namespace platform::win32
