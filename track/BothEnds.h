// The stretch between two frames where the shape is known, followed from both of them.
#pragma once

#include <optional>
#include <vector>

#include "track/Geometry.h"

namespace track {

/// One shape for each of `count` frames; none where neither way came.
/// forward: the shapes from the first frame of the stretch on, as far as they could be followed.
/// backward: the same from the last frame towards the first.
/// Where both came, their corners are mixed, and each way counts the more the nearer it began, so
/// that the errors that following gathers vanish at both ends. Polygons with different numbers of
/// corners cannot be mixed: there the way that began nearer counts alone.
[[nodiscard]] std::vector<std::optional<Polygon>>
joinBothEnds(const std::vector<Polygon>& forward, const std::vector<Polygon>& backward, int count);

} // namespace track
