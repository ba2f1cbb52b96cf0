// The rules of a shape's points and handles. This module's sources only.
#pragma once

#include <cstddef>
#include <span>

#include "platform/Geometry.h"

namespace zone {

/// Handles are squares of this half side, right and bottom edges excluded.
inline constexpr int kHandleReach = 8;
/// With fewer points a shape has no closing line and no centre handle.
inline constexpr int kMinimumOutline = 3;

/// A sum that wraps instead of overflowing: files hold any 32-bit coordinate.
[[nodiscard]] constexpr int wrappedSum(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}
[[nodiscard]] constexpr int wrappedDifference(int a, int b) {
    return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

/// The nearest coordinate; half a pixel goes away from zero.
[[nodiscard]] int roundedCoordinate(double value);
/// Logs "Invalid point index".
void reportPointIndex();
/// A side of `area` that is not positive only raises negative values to 0.
[[nodiscard]] platform::Point clampedTo(platform::Size area, platform::Point point);
/// Where the centre handle is: the mean of an outline, the plain sum of one or two points.
[[nodiscard]] platform::Point shapeCenter(std::span<const platform::Point> points);
/// Where a point behind `afterIndex` goes among `count`; -1 when `afterIndex` is no point or there
/// is no room for one more.
[[nodiscard]] int insertPosition(int afterIndex, std::size_t count);
void shiftPoints(std::span<platform::Point> points, platform::Point delta);
/// The lowest index of a point whose handle is at `at`; -1 for none. `reach`: half the side of a
/// handle, in display pixels.
[[nodiscard]] int hitPoint(std::span<const platform::Point> points, platform::Point at,
                           double reach = kHandleReach);
/// As hitPoint; then the point count for the centre handle of an outline.
[[nodiscard]] int hitHandle(std::span<const platform::Point> points, platform::Point center,
                            platform::Point at, double reach = kHandleReach);

} // namespace zone
