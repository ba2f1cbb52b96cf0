#include "ZoneEdit/RenamedZones.h"

#include <map>
#include <set>

#include "zone/ZoneManager.h"

namespace zoneedit {

RenamedZones::RenamedZones(const zone::ZoneManager& zones) {
    for (int zone = 0; zone < zones.zoneCount(); ++zone) {
        m_names.emplace_back(zones.zone(zone), zones.getZoneName(zone));
    }
}

std::vector<app_state::ScreenResult::Rename>
RenamedZones::in(const zone::ZoneManager& zones) const {
    std::set<std::string> names;
    std::map<std::shared_ptr<const zone::Zone>, std::string> now;
    for (int zone = 0; zone < zones.zoneCount(); ++zone) {
        names.insert(zones.getZoneName(zone));
        now[zones.zone(zone)] = zones.getZoneName(zone);
    }
    std::vector<app_state::ScreenResult::Rename> renames;
    for (const auto& [zone, name] : m_names) {
        const auto found = now.find(zone.lock());
        if (found != now.end() && names.insert(name).second) {
            renames.push_back({name, found->second});
        }
    }
    return renames;
}

} // namespace zoneedit
