// The zone manager of the video that is edited, for whoever has no window to ask. UI thread only.
#pragma once

#include <memory>

namespace zone {
class ZoneManager;
}

namespace zoneedit {

/// For reading: the session changes it. Empty when no video is edited.
[[nodiscard]] std::shared_ptr<const zone::ZoneManager> currentZoneManager();
/// Replaces it; an empty pointer drops it.
void setCurrentZoneManager(std::shared_ptr<const zone::ZoneManager> manager);

} // namespace zoneedit
