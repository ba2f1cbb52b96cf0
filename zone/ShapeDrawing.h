// How a shape looks over the picture. This module's sources only.
#pragma once

#include <span>

#include "platform/Canvas.h"
#include "platform/Geometry.h"

namespace zone {

/// More points than this are not painted, so that the outline a damaged file makes up cannot hold
/// the window still; no author draws as many.
inline constexpr std::size_t kMaxPaintedPoints = 10'000;

/// Paints lines, centre handle and numbered point handles, and returns the centre, which is
/// without the origin: the mean of an outline, the plain sum of one or two points.
platform::Point drawShape(platform::Canvas& canvas, std::span<const platform::Point> points,
                          bool active, platform::Point origin, int selectedIndex);

} // namespace zone
