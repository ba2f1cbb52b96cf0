// A map as a file: a drawing in SVG, or a graph in the DOT language. Every branch is in it with its
// whole name, nothing is folded, and the same scene always gives the same bytes.
#pragma once

#include <string>

#include "map/MapScene.h"

namespace map {

/// UTF-8. Characters that XML cannot hold become U+FFFD.
[[nodiscard]] std::string svgText(const MapScene& scene);
[[nodiscard]] std::string dotText(const MapScene& scene);

} // namespace map
