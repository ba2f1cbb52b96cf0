// The pointers that systems have none of their own for, drawn dark with a white edge, so that they
// show on any picture.
#pragma once

#include "platform/Bitmap.h"
#include "platform/WindowParts.h"

namespace platform::raster {

/// The side of the picture in layout pixels. What it points at is its middle.
inline constexpr int kPointerSide = 24;

/// `scale`: pixels of the screen for a layout pixel. Empty for a shape that every system has.
[[nodiscard]] Bitmap pointerPicture(PointerShape shape, double scale);

} // namespace platform::raster
