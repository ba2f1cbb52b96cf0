// Where the tour's panel, its pointer and the ring around what it is about stand in a window. Plain
// arithmetic, without any window.
#pragma once

#include "platform/Geometry.h"

namespace ui {

struct TourPlaces {
    /// The side of the panel that the pointer is on.
    enum class Side { none, top, bottom, left, right };

    platform::Rect ring;    ///< empty without a subject
    platform::Rect panel;   ///< in the room, whole
    platform::Rect pointer; ///< laps over the panel's edge by a pixel; empty: none
    Side side = Side::none;
};

/// `subject`: what the panel is about; may be empty. The panel stands below it, else above it, else
/// beside it, as `room` allows, and without a pointer over its lower end where there is no room
/// beside it.
[[nodiscard]] TourPlaces placeTour(const platform::Rect& subject, const platform::Rect& room,
                                   platform::Size panel);

} // namespace ui
