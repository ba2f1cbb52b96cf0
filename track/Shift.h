// How far a part of the picture has moved, roughly, however far that is.
#pragma once

#include "track/Geometry.h"
#include "track/Picture.h"

namespace track {

/// The shift by which what `polygon` holds on `from` is found again on `to`: the least sum of
/// squared differences, mean values taken out, over all whole pixels of a small level. Reaches 96
/// pixels each way for things of 100 pixels and more, 48 and 24 for smaller ones. (0, 0) where
/// nothing says more.
[[nodiscard]] Point findShift(const Pyramid& from, const Pyramid& to, const Polygon& polygon);

} // namespace track
