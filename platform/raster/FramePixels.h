// Reads pixels of a frame buffer as a canvas has them.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace platform::raster {

inline constexpr int kFrameBytesPerPixel = 3;

/// `bytes`: blue, green, red. Opaque.
[[nodiscard]] inline std::uint32_t readPixel(const std::uint8_t* bytes) {
    return 0xFF000000U | static_cast<std::uint32_t>(bytes[2]) << 16U |
           static_cast<std::uint32_t>(bytes[1]) << 8U | bytes[0];
}

/// As readPixel, by one load that also reads the byte after the pixel.
[[nodiscard]] inline std::uint32_t readPixelFast(const std::uint8_t* bytes) {
    if constexpr (std::endian::native == std::endian::little) {
        std::uint32_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        return word | 0xFF000000U;
    } else {
        return readPixel(bytes);
    }
}

} // namespace platform::raster
