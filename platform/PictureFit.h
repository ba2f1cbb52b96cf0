// Pictures that are fitted into an area of the window.
#pragma once

#include "platform/Geometry.h"

namespace platform {

/// `picture` without the line of a pixel on a side that rounding may leave: as wide or high as the
/// area where it misses that by two pixels at most.
[[nodiscard]] constexpr Rect withoutSlivers(Rect picture, const Rect& area) {
    constexpr int kSliver = 2;
    if (area.width() - picture.width() <= kSliver) {
        picture.left = area.left;
        picture.right = area.right;
    }
    if (area.height() - picture.height() <= kSliver) {
        picture.top = area.top;
        picture.bottom = area.bottom;
    }
    return picture;
}

} // namespace platform
