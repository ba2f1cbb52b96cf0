// Drawing a line of text that may be too long for its box.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/FontSet.h"

namespace toolkit {

/// Whether `text` fits into `width` pixels whole.
[[nodiscard]] bool fitsInto(int width, std::u16string_view text, platform::FontHandle font,
                            const platform::FontSet& fonts);

/// `text`, or as much of its beginning as fits into `width` pixels followed by U+2026. Whole
/// characters only; empty when not even the ellipsis fits.
[[nodiscard]] std::u16string fittedText(std::u16string_view text, int width,
                                        platform::FontHandle font, const platform::FontSet& fonts);

/// `text` broken at blanks into lines of `width` pixels, `most` at most (one or more): the last one
/// has all that is left and, like a word that is longer than a line, may not fit.
[[nodiscard]] std::vector<std::u16string> brokenText(std::u16string_view text, int width,
                                                     std::size_t most, platform::FontHandle font,
                                                     const platform::FontSet& fonts);

struct TextLook {
    platform::FontHandle font = 0;
    platform::Color color = 0xFF000000;
    platform::TextAlign align = platform::TextAlign::left;
    bool endEllipsis = true;
};

void paintTextLine(platform::Canvas& canvas, const platform::FontSet& fonts,
                   std::u16string_view text, const platform::Rect& box, const TextLook& look);

} // namespace toolkit
