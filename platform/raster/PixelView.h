// The pixels that a raster canvas draws on, wherever they live: in a bitmap or in native memory.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Bitmap.h"
#include "platform/Geometry.h"

namespace platform::raster {

/// Top row first, rows of `size.width` pixels without padding, premultiplied 0xAARRGGBB. Not owned:
/// what it was made of must outlive it.
class PixelView {
public:
    PixelView(std::uint32_t* pixels, Size size) : m_pixels(pixels), m_size(size) {}
    // Implicit: a bitmap serves wherever pixels are asked for.
    PixelView(Bitmap& bitmap)
        : m_pixels(bitmap.isEmpty() ? nullptr : bitmap.row(0)), m_size(bitmap.size()) {}

    [[nodiscard]] Size size() const { return m_size; }
    /// Row y, 0 <= y < height.
    [[nodiscard]] std::uint32_t* row(int y) const {
        return m_pixels + static_cast<std::ptrdiff_t>(y) * m_size.width;
    }

private:
    std::uint32_t* m_pixels;
    Size m_size;
};

} // namespace platform::raster
