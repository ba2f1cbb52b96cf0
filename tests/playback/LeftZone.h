// A saved zone for clips of 64 x 48 pixels and 30 frames.
#pragma once

#include <stdexcept>
#include <string>

#include "platform/Geometry.h"
#include "player/Clip.h"
#include "zone/EditContext.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace playback {

/// Over the left half of the picture, active from frame 5 on.
inline void makeLeftZone(const std::string& videoPath, const std::string& name) {
    const auto zones = zone::ZoneManager::createEmpty();
    zones->scale = zone::scaleBetween(player::kZoneArea, {64, 48});
    zones->frameCount = 30;
    zones->videoWidth = player::kZoneArea.width;
    zones->videoHeight = player::kZoneArea.height;
    const auto added = zone::Zone::create(30);
    added->setName(name);
    zones->addZone(added);
    zone::EditContext context;
    context.progressChanges = true;
    for (const platform::Point corner : {platform::Point{0, 0}, {640, 0}, {640, 719}, {0, 719}}) {
        zones->addPoint(context, 0, 0, corner.x, corner.y);
    }
    context.progressChanges = false;
    for (int frame = 0; frame < 5; ++frame) {
        zones->setActive(context, 0, frame, false);
    }
    if (!zones->save(videoPath)) {
        throw std::runtime_error("no zones for " + videoPath);
    }
}

} // namespace playback
