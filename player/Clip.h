// What a player knows of a clip: its length, its speed and its zones, frame by frame.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"

namespace player {

/// The width and height of the area that zones are measured in, whatever the clip's own.
inline constexpr platform::Size kZoneArea{1280, 720};

/// From `firstFrame` up to that of the next one.
struct ZoneShape {
    int firstFrame = 0;
    bool isActive = true;
    std::vector<platform::Point> points{}; ///< corners of a closed polygon, in the zone area
};

struct ZoneTrack {
    std::string name{};
    std::vector<ZoneShape> shapes{}; ///< by their first frames; the last holds for all later ones
};

struct Clip {
    int frameCount = -1; ///< -1: unknown; such a clip has no zones
    double framesPerSecond = 25.0;
    std::vector<ZoneTrack> zones{};
};

/// The zone's shape on a frame; null if it has none there.
[[nodiscard]] const ZoneShape* shapeAt(const ZoneTrack& zone, int frame);
/// Whether the middle of a pixel of the zone area lies inside, by the even-odd rule.
[[nodiscard]] bool contains(const ZoneShape& shape, platform::Point pixel);
/// Whether the clip has an active zone of this name on the frame.
[[nodiscard]] bool hasActiveZone(const Clip& clip, std::string_view name, int frame);
/// Whether a click reaches an active zone of this name.
[[nodiscard]] bool isHit(const Clip& clip, std::string_view name, int frame, platform::Point pixel);

} // namespace player
