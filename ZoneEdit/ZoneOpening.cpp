#include "ZoneEdit/ZoneOpening.h"

#include <utility>

#include "ZoneEdit/CurrentZones.h"
#include "core/EditorSettings.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "recovery/Backups.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

std::shared_ptr<zone::ZoneManager> openZones(const EditedVideo& video, const std::string& path,
                                             platform::Size area,
                                             std::function<std::string()> versionsFolder,
                                             std::shared_ptr<core::EditorSettings> settings) {
    const auto scale = zone::scaleBetween(area, video.size());
    // A video that does not tell its length must not cut what was stored for it.
    std::shared_ptr<zone::ZoneManager> zones = zone::ZoneManager::createForEditing(
        core::withoutExtension(path),
        video.hasFrames() ? video.frameCount() : zone::kStoredFrameCount, scale);
    if (!zones) {
        core::Log::get()->Error("Unable to create zone manager interface");
        return nullptr;
    }
    zones->scale = scale;
    zones->setKeeper(std::make_shared<recovery::Backups>(
        std::move(versionsFolder),
        [settings = std::move(settings)] { return !settings || settings->keepBackups(); }));
    setCurrentZoneManager(zones);
    return zones;
}

} // namespace zoneedit
