// What checking needs to know of zones' shapes. This module's sources only.
#pragma once

#include <span>

#include "check/Facts.h"
#include "platform/Geometry.h"

namespace zone {
class Zone;
}

namespace check {

/// Points are counted in these parts of a pixel, so that rounding moves none over an edge.
inline constexpr int kPartsOfPixel = 64;

/// Whether no part of the polygon lies in the picture, which is as large as `picture` says.
[[nodiscard]] bool isOutside(std::span<const platform::Point> points, platform::Size picture);

/// Of a zone with all its stored frames, points in parts of pixels, brought to `frameCount` frames
/// (-1 if unknown: as many as are stored) as loading does: the last one is repeated, surplus ones
/// are dropped. Without a size, nothing lies outside.
[[nodiscard]] ZoneFacts factsOf(const zone::Zone& zone, int frameCount, platform::Size video);

} // namespace check
