// The pointers that systems have none of their own for, drawn dark with a white edge, so that they
// show on any picture.
#pragma once

#include "platform/Bitmap.h"
#include "platform/Geometry.h"
#include "platform/WindowParts.h"

namespace platform::raster {

/// The side of a picture in layout pixels.
inline constexpr int kPointerSide = 24;

struct PointerPicture {
    Bitmap bitmap; ///< empty for a shape that every system has
    Point hotSpot; ///< the pixel of it that points
};

/// `scale`: pixels of the screen for a layout pixel.
[[nodiscard]] PointerPicture pointerPicture(PointerShape shape, double scale);

} // namespace platform::raster
