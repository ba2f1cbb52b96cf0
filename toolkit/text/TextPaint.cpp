#include "toolkit/text/TextPaint.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "platform/Geometry.h"

namespace toolkit {

bool fitsInto(int width, std::u16string_view text, platform::FontHandle font,
              const platform::FontSet& fonts) {
    // However many marks stand over its letters, more than this is too long; it is not measured.
    constexpr std::size_t kMaxUnitsPerPixel = 8;
    const auto pixels = static_cast<std::size_t>(std::max(width, 0));
    return text.size() <= pixels * kMaxUnitsPerPixel && fonts.measure(text, font).width <= width;
}

std::u16string fittedText(std::u16string_view text, int width, platform::FontHandle font,
                          const platform::FontSet& fonts) {
    if (fitsInto(width, text, font, fonts)) {
        return std::u16string(text);
    }
    static constexpr std::u16string_view kEllipsis = u"\u2026";
    const int room = width - fonts.measure(kEllipsis, font).width;
    if (room < 0) {
        return {};
    }
    // No more than this many units can fit; a very long text need not be measured whole.
    const std::u16string_view head = text.substr(0, static_cast<std::size_t>(width) * 2 + 2);
    const std::vector<int> positions = fonts.caretPositions(head, font);
    std::size_t count = 0;
    while (count < head.size() && count + 1 < positions.size() && positions[count + 1] <= room) {
        ++count;
    }
    const auto isHighHalf = [](char16_t c) { return (c & 0xFC00) == 0xD800; };
    for (;; --count) {
        // Both halves of a pair share a position, so a cut between them leaves a high half.
        if (count > 0 && count < text.size() && isHighHalf(text[count - 1])) {
            --count;
        }
        std::u16string fitted = std::u16string(text.substr(0, count)).append(kEllipsis);
        // Together they may be a little wider than apart: letters kern, and widths are rounded.
        if (count == 0 || fonts.measure(fitted, font).width <= width) {
            return fitted;
        }
    }
}

std::vector<std::u16string> brokenText(std::u16string_view text, int width, std::size_t most,
                                       platform::FontHandle font, const platform::FontSet& fonts) {
    std::vector<std::u16string> lines;
    while (lines.size() + 1 < most && !fitsInto(width, text, font, fonts)) {
        std::size_t end = text.find(u' ');
        for (std::size_t next = end; next != std::u16string_view::npos &&
                                     fitsInto(width, text.substr(0, next), font, fonts);
             next = text.find(u' ', next + 1)) {
            end = next;
        }
        if (end == std::u16string_view::npos) {
            break;
        }
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    lines.emplace_back(text);
    return lines;
}

void paintTextLine(platform::Canvas& canvas, const platform::FontSet& fonts,
                   std::u16string_view text, const platform::Rect& box, const TextLook& look) {
    if (text.empty() || box.isEmpty() || box.intersected(canvas.clip()).isEmpty()) {
        return;
    }
    if (look.endEllipsis) {
        canvas.drawText(fittedText(text, box.width(), look.font, fonts), box, look.font, look.color,
                        look.align);
    } else {
        canvas.drawText(text, box, look.font, look.color, look.align);
    }
}

} // namespace toolkit
