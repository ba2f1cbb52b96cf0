// A picture in memory: 32 bits a pixel, premultiplied 0xAARRGGBB, top row first, rows unpadded.
// Skin images and window contents are bitmaps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/Geometry.h"

namespace platform {

class Bitmap {
public:
    Bitmap() = default;
    /// All pixels 0 (transparent). A size with a side below 1 gives an empty bitmap.
    explicit Bitmap(Size size)
        : m_size(size.width > 0 && size.height > 0 ? size : Size{}),
          m_pixels(static_cast<std::size_t>(m_size.width) *
                   static_cast<std::size_t>(m_size.height)) {}

    [[nodiscard]] Size size() const { return m_size; }
    [[nodiscard]] bool isEmpty() const { return m_pixels.empty(); }
    /// Row y, 0 <= y < height: width pixels.
    [[nodiscard]] std::uint32_t* row(int y) { return m_pixels.data() + offsetOf(y); }
    [[nodiscard]] const std::uint32_t* row(int y) const { return m_pixels.data() + offsetOf(y); }
    /// The pixel at (x, y), both inside the bitmap.
    [[nodiscard]] std::uint32_t at(int x, int y) const { return row(y)[x]; }

private:
    [[nodiscard]] std::size_t offsetOf(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_size.width);
    }

    Size m_size;
    std::vector<std::uint32_t> m_pixels;
};

} // namespace platform
