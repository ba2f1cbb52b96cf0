#include "playback/ClipZones.h"

#include <memory>
#include <optional>
#include <utility>

#include "core/Log.h"
#include "core/Paths.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneShape.h"

namespace playback {
namespace {

player::ZoneTrack trackOf(const zone::Zone& zone) {
    player::ZoneTrack track{zone.name(), {}};
    for (int frame = 0; frame < zone.frameCount(); frame = zone.sameUntil(frame)) {
        std::optional<zone::ZoneShape> shape = zone.shape(frame);
        if (!shape) {
            break;
        }
        track.shapes.push_back({frame, shape->active, std::move(shape->points)});
    }
    return track;
}

} // namespace

std::vector<player::ZoneTrack> readZones(const std::string& videoPath, platform::Size video) {
    const core::LogCollector unlogged;
    std::vector<player::ZoneTrack> tracks;
    const std::shared_ptr<const zone::ZoneManager> zones =
        zone::ZoneManager::create(core::withoutExtension(videoPath), zone::kStoredFrameCount, true,
                                  zone::scaleBetween(player::kZoneArea, video));
    for (int i = 0; zones && i < zones->zoneCount(); ++i) {
        tracks.push_back(trackOf(*zones->zone(i)));
    }
    return tracks;
}

} // namespace playback
