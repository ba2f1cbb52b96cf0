// What ZoneSession::replaceShapes does to a zone. A value.
#pragma once

#include <vector>

#include "zone/ShapeStretch.h"

namespace zone {

struct NewShapes {
    ShapeStretch stretch;
    /// What the author has shaped by it, -1 for none.
    int shapedFrame = -1;
    /// Frames that do not count as shaped by the author any more.
    FrameRange released = {};
    /// From the first frame that was followed to the last: what looks like a key there is none of
    /// the author's.
    FrameRange followed = {};
    /// The gaps between keys that it blends, from the key `first` to the key `end`, ascending: what
    /// looks like a key within them is none of the author's either.
    std::vector<FrameRange> filled = {};
    /// Later frames in the stretch that had a shape of their own; see StepReach.
    int ownFrames = 0;
    /// No point is chosen afterwards.
    bool choosesNone = false;
};

} // namespace zone
