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

/// A pixel and the one behind it, by one load of eight bytes.
inline void readPixelPair(const std::uint8_t* bytes, std::uint32_t& first, std::uint32_t& second) {
    if constexpr (std::endian::native == std::endian::little) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof word);
        first = static_cast<std::uint32_t>(word) | 0xFF000000U;
        second = static_cast<std::uint32_t>(word >> 24U) | 0xFF000000U;
    } else {
        first = readPixel(bytes);
        second = readPixel(bytes + kFrameBytesPerPixel);
    }
}

} // namespace platform::raster
