// Byte layout of a pixel in each output mode.
#pragma once

#include <array>

#include "src/TheoraOutputMode.h"

namespace theora {

enum class ColorKind { rgb, grey, yuv };

struct PixelLayout {
    ColorKind kind = ColorKind::rgb;
    int bytes = 0;               ///< of a pixel
    std::array<int, 3> colors{}; ///< offset of R, G, B or of Y, U, V; a grey pixel repeats Y
    int extra = -1;              ///< offset of the alpha or unused byte; -1 = none
    bool alpha = false;          ///< the extra byte is alpha; an unused one becomes 255
};

/// mode: not TH_UNDEFINED.
[[nodiscard]] constexpr PixelLayout pixelLayout(TheoraOutputMode mode) {
    const int value = static_cast<int>(mode);
    if (value == 11) {
        return {ColorKind::grey, 1, {0, 0, 0}, -1, false};
    }
    // Modes come in fives (1, 6, 12 and 17 on): plain, A last, X last, A first, X first.
    const int first = value < 6 ? 1 : value < 11 ? 6 : value < 17 ? 12 : 17;
    const ColorKind kind = value < 11   ? ColorKind::rgb
                           : value < 17 ? ColorKind::grey
                                        : ColorKind::yuv;
    const int variant = value - first;
    const int start = variant >= 3 ? 1 : 0;
    const bool reversed = first == 6;
    PixelLayout layout;
    layout.kind = kind;
    layout.bytes = variant == 0 ? 3 : 4;
    layout.colors = reversed ? std::array{start + 2, start + 1, start}
                             : std::array{start, start + 1, start + 2};
    layout.extra = variant == 0 ? -1 : variant >= 3 ? 0 : 3;
    layout.alpha = variant == 1 || variant == 3;
    return layout;
}

} // namespace theora
