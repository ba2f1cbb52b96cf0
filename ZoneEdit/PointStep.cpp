#include "ZoneEdit/PointStep.h"

#include <cstdint>
#include <cstdlib>

#include "zone/PointSums.h"

namespace zoneedit {

using platform::Point;
using zone::StepLabel;

void PointStep::open(StepLabel::Name name, Place place) {
    m_session.beginGesture({name, place.zone, place.frame});
    m_place = place;
    m_start.reset();
}

void PointStep::openMove(Place place) {
    const auto start = m_editor.startMove();
    open(start ? ShapeEditor::moveName(*start) : StepLabel::Name::movePoint, place);
    m_start = start;
}

void PointStep::begin(StepLabel::Name name, Place place, Point press) {
    open(name, place);
    m_press = press;
    m_grab = {};
}

void PointStep::beginMove(Place place, Point press, bool keepsDistance) {
    openMove(place);
    m_grab = {};
    if (m_start && m_start->handle >= 0 && keepsDistance) {
        m_grab = zone::differenceOf(m_start->at, press);
    }
}

void PointStep::move(Place place, Point to, bool keepsAxis) {
    // Keys work while the button is down. What they change is not part of the drag, which goes
    // on wherever they led to.
    if (place != m_place || !m_session.inGesture()) {
        openMove(place);
    }
    Point at = zone::sumOf(to, m_grab);
    if (keepsAxis) {
        const Point from = m_start ? m_start->at : m_press;
        const Point by = zone::differenceOf(at, from);
        const bool isAcross = std::abs(std::int64_t{by.x}) >= std::abs(std::int64_t{by.y});
        at = isAcross ? Point{at.x, from.y} : Point{from.x, at.y};
    }
    if (m_start) {
        m_editor.move(*m_start, at);
    } else {
        m_session.moveSelectedPoint(place.zone, place.frame, at.x, at.y);
    }
}

void PointStep::end() {
    m_start.reset();
    m_session.endGesture();
}

} // namespace zoneedit
