// Fonts by number and the size of text in them. A window's layout names its fonts; the back end
// finds a face for each. All text is UTF-16; unpaired surrogates show as U+FFFD.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"

namespace platform {

struct FontDescription {
    std::string family; ///< UTF-8; empty: the platform's own (DejaVu Sans, Segoe UI)
    int pixelSize = 12; ///< em size in pixels, 1 to 200
    bool bold = false;
    bool italic = false;
    bool operator==(const FontDescription&) const = default;
};

/// Names a font of a FontSet; equal descriptions share one handle. 0 is always the default font.
using FontHandle = int;

/// UI thread only. Handles stay valid for the life of the set.
class FontSet {
public:
    virtual ~FontSet() = default;
    virtual FontHandle open(const FontDescription& description) = 0;
    /// Height of one line (ascent + descent) in pixels.
    [[nodiscard]] virtual int lineHeight(FontHandle font) const = 0;
    /// Width and line height of `text` on one line.
    [[nodiscard]] virtual Size measure(std::u16string_view text, FontHandle font) const = 0;
    /// Pen positions for a caret: entry i is the distance from the text's left edge to code unit i;
    /// one entry more than the text has code units. Both halves of a surrogate pair share a
    /// position.
    [[nodiscard]] virtual std::vector<int> caretPositions(std::u16string_view text,
                                                          FontHandle font) const = 0;
};

} // namespace platform
