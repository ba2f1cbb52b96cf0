#include "zone/SavedContent.h"

#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zone {
namespace {

std::uint64_t digestOf(const Zone& zone, const ZoneManager& zones) {
    return zone.storedDigest(zones.scale.value_or(Scale{}));
}

} // namespace

void SavedContent::noteSaved(const ZoneManager& zones) {
    m_saved.clear();
    for (int index = 0; index < zones.zoneCount(); ++index) {
        m_saved.push_back({zones.zone(index), {}});
    }
}

void SavedContent::beforeChange(const ZoneManager& zones, const Zone& zone) {
    for (Entry& entry : m_saved) {
        if (entry.zone.get() == &zone && !entry.digest) {
            entry.digest = digestOf(zone, zones);
        }
    }
}

bool SavedContent::differs(const ZoneManager& zones) const {
    if (zones.zoneCount() != static_cast<int>(m_saved.size())) {
        return true;
    }
    int index = 0;
    for (const Entry& saved : m_saved) {
        const std::shared_ptr<const Zone> zone = zones.zone(index++);
        if (zone == saved.zone && !saved.digest) {
            continue;
        }
        const std::uint64_t before = saved.digest ? *saved.digest : digestOf(*saved.zone, zones);
        if (digestOf(*zone, zones) != before) {
            return true;
        }
    }
    return false;
}

} // namespace zone
