// Which zones of a video have other names in its files than when it was opened. Part of the zone
// editor.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/state/ScreenState.h"

namespace zone {
class Zone;
class ZoneManager;
} // namespace zone

namespace zoneedit {

class RenamedZones {
public:
    /// Notes the names of now.
    explicit RenamedZones(const zone::ZoneManager& zones);
    /// Names that another zone has now are not among them: whatever waits for it can go on.
    [[nodiscard]] std::vector<app_state::ScreenResult::Rename>
    in(const zone::ZoneManager& zones) const;

private:
    std::vector<std::pair<std::weak_ptr<const zone::Zone>, std::string>> m_names;
};

} // namespace zoneedit
