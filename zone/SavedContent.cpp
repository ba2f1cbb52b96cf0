#include "zone/SavedContent.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zone {

void SavedContent::noteSaved(const ZoneManager& zones) {
    m_saved = zones.snapshot();
    m_alike.clear();
    for (int index = 0; index < m_saved->zoneCount(); ++index) {
        m_alike.push_back(m_saved->zone(index)->shapesId());
    }
}

bool SavedContent::differs(const ZoneManager& zones) const {
    if (zones.zoneCount() != m_saved->zoneCount()) {
        return true;
    }
    // A drag changes the same frames over and over: mostly what differed before still does.
    return differs(zones, m_zone, m_frame, m_zone + 1) ||
           differs(zones, 0, 0, m_saved->zoneCount());
}

bool SavedContent::differs(const ZoneManager& zones, int first, int frame, int end) const {
    const Scale scale = m_saved->scale.value_or(Scale{});
    for (int index = first; index < std::min(end, zones.zoneCount()); ++index, frame = 0) {
        const Zone& now = *zones.zone(index);
        const Zone& saved = *m_saved->zone(index);
        if (now.name() != saved.name() || now.frameCount() != saved.frameCount()) {
            return true;
        }
        std::uint64_t& alike = m_alike[static_cast<std::size_t>(index)];
        if (now.shapesId() == alike || now.shapesId() == saved.shapesId()) {
            continue;
        }
        if (const std::optional<int> found = now.firstDifference(saved, scale, frame)) {
            m_zone = index;
            m_frame = *found;
            return true;
        }
        if (frame == 0) {
            alike = now.shapesId();
        }
    }
    return false;
}

} // namespace zone
