// Moves zones along with a picture that is scaled, cropped and given sides.
#pragma once

#include <string>

#include "import/Plan.h"
#include "platform/Geometry.h"

namespace imports {

/// Where a point of the old clip's frame, in which its picture takes the place `old`, lies in the
/// new clip's frame. Points that are cropped away come to lie on its edge.
[[nodiscard]] platform::Point mapPoint(const Framing& framing, const platform::Rect& old,
                                       platform::Point point);

enum class ZoneCopy { none, made, failed };

/// Writes the zones of the clip at `oldBase` for the one at `newBase` (paths without extension):
/// none if it has none; failed, and nothing is written, if they cannot be read whole.
[[nodiscard]] ZoneCopy copyZones(const std::string& oldBase, const std::string& newBase,
                                 const Framing& framing, const platform::Rect& old);

} // namespace imports
