// Sums of points, cut to what a coordinate can hold: the points of a file may lie anywhere.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/Geometry.h"

namespace zone {

/// The nearest coordinate that there is.
[[nodiscard]] constexpr int cutCoordinate(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

[[nodiscard]] constexpr platform::Point sumOf(platform::Point a, platform::Point b) {
    return {cutCoordinate(std::int64_t{a.x} + b.x), cutCoordinate(std::int64_t{a.y} + b.y)};
}

[[nodiscard]] constexpr platform::Point differenceOf(platform::Point a, platform::Point b) {
    return {cutCoordinate(std::int64_t{a.x} - b.x), cutCoordinate(std::int64_t{a.y} - b.y)};
}

} // namespace zone
