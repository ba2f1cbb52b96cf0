// Where drop lists and tool tips are placed, so that they stay on their monitor. Screen pixels.
#pragma once

#include "platform/Geometry.h"

namespace toolkit {

/// Below `anchor`, or above it when only there is room, or where there is more; never outside
/// `workArea` (its height is cut before it would be).
[[nodiscard]] platform::Rect placeDropList(const platform::Rect& anchor, platform::Size size,
                                           const platform::Rect& workArea);
/// Left edges in line, 2 below `anchor`, or above it where only there is room; kept 4 inside the
/// window. Window pixels.
[[nodiscard]] platform::Rect placeMenu(const platform::Rect& anchor, platform::Size size,
                                       platform::Size window);
/// `distance` below the pointer, above it where that does not fit, moved left at the right edge.
[[nodiscard]] platform::Rect placeToolTip(platform::Point pointer, int distance,
                                          platform::Size size, const platform::Rect& workArea);

} // namespace toolkit
