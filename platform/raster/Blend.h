// Arithmetic on premultiplied 0xAARRGGBB pixels, for the canvas only.
#pragma once

#include <cstdint>

#include "platform/Color.h"

namespace platform::raster {

/// Every channel of `pixel` times factor / 255, rounded; 0 <= factor <= 255.
constexpr std::uint32_t scalePixel(std::uint32_t pixel, std::uint32_t factor) {
    // Two channels at a time: x * 257 / 65536 is x / 255 once 128 is added for rounding.
    std::uint32_t odd = (pixel & 0x00FF00FFU) * factor + 0x00800080U;
    odd = ((odd + ((odd >> 8U) & 0x00FF00FFU)) >> 8U) & 0x00FF00FFU;
    std::uint32_t even = ((pixel >> 8U) & 0x00FF00FFU) * factor + 0x00800080U;
    even = (even + ((even >> 8U) & 0x00FF00FFU)) & 0xFF00FF00U;
    return odd | even;
}

/// `over` laid upon `under`.
constexpr std::uint32_t blendPixel(std::uint32_t over, std::uint32_t under) {
    const std::uint32_t alpha = over >> 24U;
    if (alpha == 255) {
        return over;
    }
    return alpha == 0 && over == 0 ? under : over + scalePixel(under, 255 - alpha);
}

/// The pixel of a plain colour.
constexpr std::uint32_t premultiply(Color color) {
    return scalePixel(color | 0xFF000000U, alphaOf(color));
}

} // namespace platform::raster
