// The earlier versions of a video's zones, for the window that lists them.
#pragma once

#include <string>

#include "ui/VersionHistory.h"

namespace zone {
class ZoneSession;
}

namespace zoneedit {

/// Those in `folder`, compared with the zones as they are now. `session` outlives the history.
[[nodiscard]] ui::VersionHistory
zoneHistory(zone::ZoneSession& session, const std::string& videoPath, const std::string& folder);

} // namespace zoneedit
