// Opens the zones of a video for editing. Part of the zone editor.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ZoneEdit/EditedVideo.h"
#include "platform/Geometry.h"

namespace core {
class EditorSettings;
}
namespace zone {
class ZoneManager;
}

namespace zoneedit {

/// The zones of the video of that path, scaled to the area that shows it. Each save keeps the
/// version before it in the folder that `versionsFolder` names then, unless the settings, which may
/// be null, say otherwise. Null, after a log line, when there is no memory for them.
[[nodiscard]] std::shared_ptr<zone::ZoneManager>
openZones(const EditedVideo& video, const std::string& path, platform::Size area,
          std::function<std::string()> versionsFolder,
          std::shared_ptr<core::EditorSettings> settings);

} // namespace zoneedit
