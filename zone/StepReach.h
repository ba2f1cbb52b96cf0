// How far a step reached, where that may surprise: over later frames that the author had shaped
// differently, over some frames only, or to the same place where the shape has moved on. For the
// window that says so. Values.
//
// A change that is carried forward also reaches later frames. These had a shape of their own if
// their outline (for the active flag: that flag) was another than the edited frame's before the
// change, whatever run they are kept in: somebody moved a point there, or a file held it so. Frames
// that merely continued the edited one had none, and frames without points never have.
#pragma once

namespace zone {

/// What one change counted while it was made.
struct FrameCounts {
    int own = 0;            ///< later frames that had a shape of their own
    int changed = 0;        ///< frames that got or lost a point
    bool isPartial = false; ///< there are others that could have
    int strays = 0;         ///< frames on which a new point does not go with its neighbours

    FrameCounts& operator+=(const FrameCounts& other) {
        own += other.own;
        changed += other.changed;
        isPartial = isPartial || other.isPartial;
        strays += other.strays;
        return *this;
    }
};

/// Of the last step.
struct StepReach {
    enum class Kind {
        plain,        ///< nothing to say
        overOwn,      ///< changed `frames` later frames that had a shape of their own
        added,        ///< a point, on `frames` of `of` frames
        addedInPlace, ///< a point, also on `frames` frames whose shape is elsewhere
        removed,      ///< as added
    };
    Kind kind = Kind::plain;
    int frames = 0;
    int of = 0;

    bool operator==(const StepReach&) const = default;
};

} // namespace zone
