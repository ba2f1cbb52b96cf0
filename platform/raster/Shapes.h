// Which pixels a line and an ellipse cover, by GDI's rules, so that zone outlines look the same on
// every system.
#pragma once

#include <functional>

#include "platform/Geometry.h"

namespace platform::raster {

/// Calls `plot` for each pixel of the line inside `clip`, from `from` to the last before `to`. A
/// pixel is the one nearest to the true line; of two equally near ones the upper or left. Takes
/// time by the size of `clip`, not by the length of the line. Coordinates beyond 2^27 count as
/// 2^27.
void walkLine(Point from, Point to, const Rect& clip, const std::function<void(Point)>& plot);

/// One row of an ellipse: outline from `left` to `innerLeft` and from `innerRight` to `right`, fill
/// between them; right ends excluded. A row without fill has innerLeft == innerRight.
struct EllipseRow {
    int left = 0;
    int innerLeft = 0;
    int innerRight = 0;
    int right = 0;
};

/// Row `row` (0 at the top) of the ellipse that fills width x height pixels, 1 <= side <= 32767,
/// 0 <= row < height; in pixels from the box's left edge. For circles the pixels are GDI's own;
/// a narrow ellipse may differ from GDI's by a pixel at its tips.
[[nodiscard]] EllipseRow ellipseRow(Size box, int row);

} // namespace platform::raster
