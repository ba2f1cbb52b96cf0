// Where single points of one picture are in another.
#pragma once

#include <vector>

#include "track/Geometry.h"
#include "track/Picture.h"

namespace track {

struct PointPair {
    Point from;
    Point to;
};

/// Follows each of `points` from one picture to the other, starting at `guess`. Keeps those that
/// come back to within 0.7 pixels when followed the other way.
///
/// Lucas and Kanade, "An Iterative Image Registration Technique", IJCAI 1981, on the levels of a
/// pyramid as in Bouguet, "Pyramidal Implementation of the Lucas Kanade Feature Tracker", 2000; the
/// way back: Kalal, Mikolajczyk and Matas, "Forward-Backward Error", ICPR 2010. The windows' mean
/// grey values are taken out, so that flicker does not count as motion.
[[nodiscard]] std::vector<PointPair> followPoints(const Pyramid& from, const Pyramid& to,
                                                  const std::vector<Point>& points,
                                                  const Warp& guess);

} // namespace track
