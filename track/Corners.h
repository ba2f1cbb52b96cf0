// Places of a picture that can be found again in the next one.
#pragma once

#include <vector>

#include "track/Geometry.h"
#include "track/Picture.h"

namespace track {

/// At most `most` corners inside the polygon, the best first and some pixels apart: places whose
/// gradients have a large smaller eigenvalue of their second moments. Shi and Tomasi, "Good
/// Features to Track", CVPR 1994. Empty where the polygon shows nothing but flat ground and
/// straight edges.
[[nodiscard]] std::vector<Point> findCorners(const Pyramid& picture, const Polygon& polygon,
                                             int most);

} // namespace track
