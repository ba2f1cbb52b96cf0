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

    /// Takes another size. All pixels are 0 again. Memory is taken with some to spare and kept, as
    /// a window that is resized needs a little more or less of it with each step.
    void reshape(Size size) {
        m_size = size.width > 0 && size.height > 0 ? size : Size{};
        const auto count =
            static_cast<std::size_t>(m_size.width) * static_cast<std::size_t>(m_size.height);
        if (count > m_pixels.capacity() || count < m_pixels.capacity() / 4) {
            m_pixels = std::vector<std::uint32_t>(); // "= {}" would keep the memory
            m_pixels.reserve(count + count / 8);
        }
        m_pixels.assign(count, 0);
    }

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
