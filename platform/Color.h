// A colour as one 32-bit value, 0xAARRGGBB, not premultiplied.
#pragma once

#include <cstdint>

namespace platform {

using Color = std::uint32_t;

/// An opaque colour from its parts, each 0 to 255.
constexpr Color rgb(unsigned red, unsigned green, unsigned blue) {
    return 0xFF000000U | (red & 0xFFU) << 16U | (green & 0xFFU) << 8U | (blue & 0xFFU);
}
constexpr unsigned alphaOf(Color c) {
    return c >> 24U;
}
constexpr unsigned redOf(Color c) {
    return (c >> 16U) & 0xFFU;
}
constexpr unsigned greenOf(Color c) {
    return (c >> 8U) & 0xFFU;
}
constexpr unsigned blueOf(Color c) {
    return c & 0xFFU;
}

} // namespace platform
