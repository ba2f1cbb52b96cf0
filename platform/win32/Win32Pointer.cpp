#include "platform/win32/Win32Pointer.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/Bitmap.h"
#include "platform/Geometry.h"
#include "platform/raster/PointerPicture.h"

namespace platform::win32 {
namespace {

const wchar_t* systemCursor(PointerShape shape) {
    switch (shape) {
    case PointerShape::text:
        return IDC_IBEAM;
    case PointerShape::hand:
        return IDC_HAND;
    case PointerShape::sizeAcross:
        return IDC_SIZEWE;
    case PointerShape::sizeDown:
        return IDC_SIZENS;
    case PointerShape::notAllowed:
        return IDC_NO;
    case PointerShape::arrow:
    case PointerShape::move:
    case PointerShape::addPoint:
    case PointerShape::deletePoint:
    case PointerShape::scale:
    case PointerShape::rotate:
    case PointerShape::rectangle:
    case PointerShape::link:
        break;
    }
    return IDC_ARROW;
}

/// Not premultiplied, as cursors have to be.
std::uint32_t plain(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24U;
    std::uint32_t result = alpha << 24U;
    for (unsigned shift = 0; alpha > 0 && shift < 24; shift += 8) {
        result |= (pixel >> shift & 0xFFU) * 255 / alpha << shift;
    }
    return result;
}

UniqueCursor drawnCursor(const raster::PointerPicture& picture) {
    const Size size = picture.bitmap.size();
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            pixels.push_back(plain(picture.bitmap.at(x, y)));
        }
    }
    const auto maskBytes = static_cast<std::size_t>((size.width + 15) / 16 * 2 * size.height);
    const std::vector<std::uint8_t> none(maskBytes);
    const UniqueBitmap color(CreateBitmap(size.width, size.height, 1, 32, pixels.data()));
    const UniqueBitmap mask(CreateBitmap(size.width, size.height, 1, 1, none.data()));
    ICONINFO info{};
    info.xHotspot = static_cast<DWORD>(picture.hotSpot.x);
    info.yHotspot = static_cast<DWORD>(picture.hotSpot.y);
    info.hbmColor = color.get();
    info.hbmMask = mask.get();
    return UniqueCursor(CreateIconIndirect(&info));
}

} // namespace

HCURSOR Win32Pointer::cursor(PointerShape shape, double scale) {
    if (!m_drawn || shape != m_shape || scale != m_scale) {
        const raster::PointerPicture picture = raster::pointerPicture(shape, scale);
        if (!picture.bitmap.isEmpty()) {
            m_drawn = drawnCursor(picture);
            m_shape = shape;
            m_scale = scale;
        }
    }
    const bool isDrawn = m_drawn && shape == m_shape;
    return isDrawn ? m_drawn.get() : LoadCursorW(nullptr, systemCursor(shape));
}

} // namespace platform::win32
