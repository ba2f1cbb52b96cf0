// The same task done with OpenCV, where it is installed: corners followed from picture to picture,
// and a similarity that most of them agree on.
#pragma once

#include "track/Geometry.h"
#include "track/Picture.h"

namespace bench {

[[nodiscard]] bool hasPeer();

/// Where the polygon of `before` is on `now`; empty when it is lost. One core.
[[nodiscard]] track::Polygon followByPeer(const track::GreyView& before, const track::GreyView& now,
                                          const track::Polygon& polygon);

} // namespace bench
