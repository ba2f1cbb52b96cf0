// What a step of the zone editor is called in the history: for the buttons and keys that take it
// back and for showing where it happened.
#pragma once

#include <string>

namespace zone {

/// Names a step and the place it happened at.
struct StepLabel {
    enum class Name {
        addZone,
        removeZone,
        rename,
        addPoint,
        movePoint,
        deletePoint,
        active,
        restore,
        interpolate,
        fill,
        paste,
        applyShape,
        follow,
        rectangle,
        scale,
        rotate,
        matchPoints
    };

    Name name = Name::addZone;
    int zone = -1;
    int frame = -1; ///< -1 for none

    bool operator==(const StepLabel&) const = default;
};

/// "move point"
[[nodiscard]] std::string stepName(StepLabel::Name name);

} // namespace zone
