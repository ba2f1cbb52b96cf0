// The outline of a zone on one frame, as a value: what Zone::shape hands out of its compact store.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/Geometry.h"

namespace zone {

struct ZoneShape {
    /// Bytes of this shape's record in a file; 0 until the first point of a new shape.
    std::uint32_t recordSize = 0;
    /// The corners of a closed polygon, in display pixels from the picture area's top left.
    std::vector<platform::Point> points;
    bool active = true;
};

} // namespace zone
