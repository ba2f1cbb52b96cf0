#include "zone/SessionKeys.h"

#include <algorithm>

#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace zone {

SessionKeys::SessionKeys(ZoneSession& session)
    : m_session(session),
      m_changes(session.observe([this](const auto& changes) { note(changes); })) {}

const ShapeKeys& SessionKeys::of(int zone) {
    const auto found =
        zone >= 0 && zone < m_session.zones().zoneCount() ? m_session.zones().zone(zone) : nullptr;
    if (!found) {
        m_keys = {};
        m_zone = -1;
        return m_keys;
    }
    const bool isKnown = zone == m_zone && m_changed != FrameRange{};
    if (zone != m_zone || (!isKnown && m_shapesId != found->shapesId())) {
        m_keys.compute(*found);
    } else if (isKnown) {
        m_keys.update(*found, m_changed);
    }
    m_zone = zone;
    m_shapesId = found->shapesId();
    m_changed = {};
    return m_keys;
}

void SessionKeys::note(const std::vector<ZoneChange>& changes) {
    for (const ZoneChange& change : changes) {
        if (change.what == ZoneChange::What::list) {
            m_zone = -1;
        } else if (change.what == ZoneChange::What::shapes && change.zone == m_zone) {
            m_changed = m_changed == FrameRange{}
                            ? change.frames
                            : FrameRange{std::min(m_changed.first, change.frames.first),
                                         std::max(m_changed.end, change.frames.end)};
        }
    }
}

} // namespace zone
