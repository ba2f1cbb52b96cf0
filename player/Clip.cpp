#include "player/Clip.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace player {

const ZoneShape* shapeAt(const ZoneTrack& zone, int frame) {
    const auto behind = std::upper_bound(
        zone.shapes.begin(), zone.shapes.end(), frame,
        [](int wanted, const ZoneShape& shape) { return wanted < shape.firstFrame; });
    return behind == zone.shapes.begin() ? nullptr : &*std::prev(behind);
}

// In floating point, step by step as written, so that every player comes to the same result.
bool contains(const ZoneShape& shape, platform::Point pixel) {
    const double x = pixel.x + 0.5;
    const double y = pixel.y + 0.5;
    bool isInside = false;
    const std::size_t count = shape.points.size();
    for (std::size_t i = 0; i < count; ++i) {
        const platform::Point from = shape.points[i];
        const platform::Point to = shape.points[(i + 1) % count];
        if ((from.y > y) == (to.y > y)) {
            continue;
        }
        const double part = (y - from.y) / (static_cast<double>(to.y) - from.y);
        if (x < from.x + part * (static_cast<double>(to.x) - from.x)) {
            isInside = !isInside;
        }
    }
    return isInside;
}

bool hasActiveZone(const Clip& clip, std::string_view name, int frame) {
    return clip.frameCount >= 0 &&
           std::any_of(clip.zones.begin(), clip.zones.end(), [&](const ZoneTrack& zone) {
               const ZoneShape* shape = zone.name == name ? shapeAt(zone, frame) : nullptr;
               return shape != nullptr && shape->isActive;
           });
}

bool isHit(const Clip& clip, std::string_view name, int frame, platform::Point pixel) {
    return clip.frameCount >= 0 &&
           std::any_of(clip.zones.begin(), clip.zones.end(), [&](const ZoneTrack& zone) {
               const ZoneShape* shape = zone.name == name ? shapeAt(zone, frame) : nullptr;
               return shape != nullptr && shape->isActive && contains(*shape, pixel);
           });
}

} // namespace player
