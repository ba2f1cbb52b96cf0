// Brings shapes to one number of points, so that they can be blended. Only reads the zone; no
// window.
#pragma once

#include <optional>
#include <span>

#include "zone/NewShapes.h"

namespace zone {

class Zone;

/// Brings the shapes of `keys`, ascending, to the largest number of points among them: one with
/// fewer gets points in the middle of its longest edges, and so do the frames beside it up to those
/// with another number. None when the numbers are equal, when a key has no point, or when the
/// result would have more than kMaxEditedPoints.
[[nodiscard]] std::optional<NewShapes> matched(const Zone& zone, std::span<const int> keys);

} // namespace zone
