// What the session knows about the reach of the last step, and the corrections that follow from it.

#include <cstddef>
#include <optional>
#include <utility>

#include "platform/Geometry.h"
#include "zone/ShapeEdits.h"
#include "zone/ShapeGeometry.h"
#include "zone/ShapeStretch.h"
#include "zone/StepLabel.h"
#include "zone/Zone.h"
#include "zone/ZoneSession.h"
#include "zone/ZoneShape.h"

namespace zone {

using Name = StepLabel::Name;
using platform::Point;

namespace {

bool changesWholeShape(Name name) {
    return name == Name::paste || name == Name::scale || name == Name::rotate;
}

/// Steps that may be carried to later frames.
bool isCarried(Name name) {
    return name == Name::movePoint || name == Name::active || changesWholeShape(name);
}

} // namespace

void ZoneSession::beginReach(const StepLabel& label) {
    if (!m_gesture || m_gestureZones.empty()) {
        m_model.counts = {};
        m_isPlainEdit = !m_gesture || label == m_gestureLabel;
    } else {
        const StepLabel move{Name::movePoint, m_gestureLabel.zone, m_gestureLabel.frame};
        const bool isRepeated = label == m_gestureLabel && changesWholeShape(label.name);
        m_isPlainEdit = m_isPlainEdit && (label == move || isRepeated);
    }
}

StepReach ZoneSession::reach() const {
    const StepLabel* last = undoLabel();
    if (!last || !m_isPlainEdit) {
        return {};
    }
    const FrameCounts& counts = m_model.counts;
    const int all = allFrames(last->zone).end;
    if (last->name == Name::addPoint && counts.isPartial && counts.changed > 0) {
        return {StepReach::Kind::added, counts.changed, all};
    }
    if (last->name == Name::addPoint && counts.strays > 0) {
        return {StepReach::Kind::addedInPlace, counts.strays, all};
    }
    if (last->name == Name::deletePoint && counts.isPartial) {
        return {StepReach::Kind::removed, counts.changed, all};
    }
    return isCarried(last->name) && counts.own > 0
               ? StepReach{StepReach::Kind::overOwn, counts.own, all}
               : StepReach{};
}

bool ZoneSession::keepToOneFrame() {
    if (reach().kind != StepReach::Kind::overOwn) {
        return false;
    }
    const StepLabel label = *undoLabel();
    const int zone = label.zone;
    const int frame = label.frame;
    const std::optional<ZoneShape> shape = zones().zone(zone)->shape(frame);
    const int selected = m_model.context.zone(zone).selectedPoint;
    (void)m_history.undo();
    edit(label, {frame, frame + 1},
         [=](ZoneManager& zones, EditContext& context, TrackChanges* changes) {
             zones.putShape(context, zone, frame, shape.value_or(ZoneShape()), changes);
             context.zone(zone).selectedPoint = selected;
         },
         TrackChanges::Keep::all, {label.name == Name::active ? -1 : frame});
    return true;
}

void ZoneSession::noteLastPoint(int zone, int frame, Point at) {
    const auto points = isThere(zone, frame) ? zones().zone(zone)->points(frame) : std::nullopt;
    m_lastPoint = {at, points ? insertPosition(editingOf(zone).selectedPoint, points->size()) : -1,
                   context().handleReach};
}

bool ZoneSession::canExtend() const {
    const StepReach::Kind kind = reach().kind;
    return kind == StepReach::Kind::removed || kind == StepReach::Kind::addedInPlace ||
           (kind == StepReach::Kind::added && m_lastPoint.index > 0);
}

bool ZoneSession::extendToAllFrames() {
    if (!canExtend()) {
        return false;
    }
    const StepLabel label = *undoLabel();
    const LastPoint last = m_lastPoint;
    if (label.name == Name::addPoint) {
        addToAllFrames(label, last.index);
        return true;
    }
    (void)m_history.undo();
    edit(label, allFrames(label.zone),
         [=](ZoneManager& zones, EditContext& context, TrackChanges* changes) {
             const double reach = std::exchange(context.handleReach, last.reach);
             zones.deletePoint(context, label.zone, label.frame, last.at.x, last.at.y, changes,
                               true);
             context.handleReach = reach;
         });
    return true;
}

void ZoneSession::addToAllFrames(const StepLabel& label, int index) {
    // It may have been dragged at once.
    const Point now =
        zones().zone(label.zone)->points(label.frame).value()[static_cast<std::size_t>(index)];
    (void)m_history.undo();
    edit(label, allFrames(label.zone),
         [shapes = withPointEverywhere(*zones().zone(label.zone), label.frame, index - 1, now),
          label, index](ZoneManager& zones, EditContext& context, TrackChanges* changes) {
             zones.replaceShapes(context, label.zone, shapes.stretch, changes);
             context.zone(label.zone).selectedPoint = index;
         });
}

} // namespace zone
