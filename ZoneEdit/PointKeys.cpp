#include "ZoneEdit/PointKeys.h"

#include <utility>

#include "zone/NewShapes.h"
#include "zone/PointSums.h"
#include "zone/ShapeEdits.h"
#include "zone/StepLabel.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

using Name = zone::StepLabel::Name;

void PointKeys::begin() {
    m_start = m_editor.startMove();
    m_by = {};
    if (m_start) {
        m_session.beginGesture(
            {ShapeEditor::moveName(*m_start), m_start->place.zone, m_start->place.frame});
    }
}

void PointKeys::nudge(platform::Point by) {
    if (!canNudge()) {
        return;
    }
    const platform::Point at = m_editor.handlePlace().value_or(platform::Point());
    const platform::Point to = m_editor.reachable(zone::sumOf(at, by));
    if (to == at) { // at the border: no step
        return;
    }
    if (!m_start || !m_session.inGesture() || m_editor.place() != m_start->place ||
        m_editor.handle() != m_start->handle) {
        begin();
    }
    if (m_start && m_start->isPlain) {
        m_editor.move(*m_start, to);
    } else if (m_start) {
        m_by = zone::sumOf(m_by, zone::differenceOf(to, at));
        m_editor.move(*m_start, zone::sumOf(m_start->at, m_by));
    }
    m_video.repaintZoneNow();
}

void PointKeys::note(const platform::Event& event) {
    using platform::EventKind;
    if (m_start && (event.kind == EventKind::keyUp || event.kind == EventKind::deactivated ||
                    event.kind == EventKind::mouseDown)) {
        m_start.reset();
        m_session.endGesture();
    }
}

bool PointKeys::canRemove() const {
    const int handle = m_editor.handle();
    return handle >= 0 && handle < static_cast<int>(m_editor.points().size());
}

void PointKeys::remove() {
    const auto place = m_editor.place();
    if (!place || !canRemove()) {
        return;
    }
    zone::NewShapes without =
        zone::withoutPoint(*m_session.zones().zone(place->zone), m_editor.handle());
    without.choosesNone = true;
    m_session.endGesture();
    m_session.replaceShapes({Name::deletePoint, place->zone, place->frame}, std::move(without));
    m_video.repaintZone();
}

} // namespace zoneedit
