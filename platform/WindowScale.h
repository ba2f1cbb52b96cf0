// Between layout pixels and those that the window system counts in, `unit` of them to each.
#pragma once

#include <algorithm>
#include <cmath>

#include "platform/Geometry.h"

namespace platform {

inline constexpr double kPixelSlack = 1e-6; ///< what divisions by a scale may be off

[[nodiscard]] inline int nearestPixel(double at) {
    return static_cast<int>(std::lround(at));
}
[[nodiscard]] inline Point toSystem(Point at, double unit) {
    return {nearestPixel(at.x * unit), nearestPixel(at.y * unit)};
}
/// All of the layout pixels fit in.
[[nodiscard]] inline Size toSystem(Size size, double unit) {
    const auto length = [unit](int from) {
        return static_cast<int>(std::ceil(from * unit - kPixelSlack));
    };
    return {length(size.width), length(size.height)};
}
[[nodiscard]] inline Point toLayout(Point at, double unit) {
    return {nearestPixel(at.x / unit), nearestPixel(at.y / unit)};
}
[[nodiscard]] inline Rect toLayout(const Rect& place, double unit) {
    return {nearestPixel(place.left / unit), nearestPixel(place.top / unit),
            nearestPixel(place.right / unit), nearestPixel(place.bottom / unit)};
}
/// The layout pixel that the point lies in.
[[nodiscard]] inline Point layoutPixel(Point at, double unit) {
    const auto pixel = [unit](int from) {
        return static_cast<int>(std::floor(from / unit + kPixelSlack));
    };
    return {pixel(at.x), pixel(at.y)};
}

/// The factor, in steps of a twentieth and at most 1, by which a window that needs at least `least`
/// layout pixels at `scale` has to be smaller to fit into `area`. Very small screens show a part.
[[nodiscard]] inline double fitInto(Size least, double scale, Size area) {
    constexpr double kSteps = 20;
    constexpr double kLowest = 5 / kSteps;
    if (area.width < 1 || area.height < 1) { // no screen
        return 1;
    }
    const double part = std::min(area.width / (std::max(least.width, 1) * scale),
                                 area.height / (std::max(least.height, 1) * scale));
    return std::clamp(std::floor(part * kSteps) / kSteps, kLowest, 1.0);
}

/// The layout size that a window keeps when its unit changes.
struct KeptSize {
    Size layout; ///< as its owner set it or the user made it
    Size system; ///< what it has of that, which the work area may have cut

    /// In layout pixels, when the window has the size `now`.
    [[nodiscard]] Size at(Size now, double unit) const {
        if (now == toSystem(layout, unit)) {
            return layout; // not what is left of it after rounding twice
        }
        const Point end = layoutPixel({now.width, now.height}, unit);
        return {std::max(end.x, 1), std::max(end.y, 1)};
    }
    /// The window has another size: keeps it, unless `fit` gave it.
    void note(Size now, double unit) {
        if (now != system) {
            layout = at(now, unit);
            system = now;
        }
    }
    /// The size for a new unit, no larger than `most` but in no case smaller than `least`, both the
    /// system's.
    Size fit(double unit, Size least, Size most) {
        const Size wanted = toSystem(layout, unit);
        system = {std::max(std::min(wanted.width, most.width), least.width),
                  std::max(std::min(wanted.height, most.height), least.height)};
        return system;
    }
};

} // namespace platform
