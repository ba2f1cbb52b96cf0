// The inner loops of the colour conversion: one or two rows of pixels that share a row of chroma. A
// portable set and one for AVX2.
#pragma once

#include <array>
#include <cstdint>

#include "src/TheoraUtil/PixelLayout.h"

namespace theora {

/// Every row has `width` luma samples (and `width` alpha samples, if any), `u` and `v` one sample
/// per 1 << chromaShiftX of them.
struct ColorRows {
    int rowCount = 1; ///< 1 or 2
    int width = 0;
    int chromaShiftX = 1;
    std::array<const std::uint8_t*, 2> luma{};
    std::array<const std::uint8_t*, 2> alpha{}; ///< luma that becomes alpha; null in other modes
    const std::uint8_t* u = nullptr;
    const std::uint8_t* v = nullptr;
    std::array<std::uint8_t*, 2> out{};
};

/// The rows without their first `columns` columns; columns: even.
[[nodiscard]] ColorRows skipColumns(const ColorRows& rows, int columns, int bytesPerPixel);

using ColorRowFunction = void (*)(const ColorRows& rows);

/// For every layout of pixelLayout().
[[nodiscard]] ColorRowFunction portableColorRows(const PixelLayout& layout);
/// Null on a processor without AVX2.
[[nodiscard]] ColorRowFunction avx2ColorRows(const PixelLayout& layout);

/// Byte order of a pixel; the loops are compiled once for each.
enum class PixelOrder { plain, extraBehind, extraInFront };
[[nodiscard]] constexpr PixelOrder pixelOrder(const PixelLayout& layout) {
    return layout.extra < 0    ? PixelOrder::plain
           : layout.extra == 0 ? PixelOrder::extraInFront
                               : PixelOrder::extraBehind;
}
/// Whether blue comes before red.
[[nodiscard]] constexpr bool isReversed(const PixelLayout& layout) {
    return layout.colors[0] > layout.colors[2];
}

/// A table of functions for every kind, direction and order of pixels; Set<kind, reversed,
/// order>::run.
template <template <ColorKind, bool, PixelOrder> typename Set, ColorKind kind, bool reversed>
[[nodiscard]] ColorRowFunction chooseOrder(PixelOrder order) {
    switch (order) {
    case PixelOrder::plain:
        return Set<kind, reversed, PixelOrder::plain>::run;
    case PixelOrder::extraBehind:
        return Set<kind, reversed, PixelOrder::extraBehind>::run;
    case PixelOrder::extraInFront:
        break;
    }
    return Set<kind, reversed, PixelOrder::extraInFront>::run;
}

template <template <ColorKind, bool, PixelOrder> typename Set>
[[nodiscard]] ColorRowFunction chooseColorRows(const PixelLayout& layout) {
    const PixelOrder order = pixelOrder(layout);
    if (layout.kind == ColorKind::grey) {
        return chooseOrder<Set, ColorKind::grey, false>(order);
    }
    if (layout.kind == ColorKind::yuv) {
        return chooseOrder<Set, ColorKind::yuv, false>(order);
    }
    return isReversed(layout) ? chooseOrder<Set, ColorKind::rgb, true>(order)
                              : chooseOrder<Set, ColorKind::rgb, false>(order);
}

} // namespace theora
