#include "zone/ZoneSession.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

#include "core/FileError.h"
#include "core/Text.h"
#include "edit/Steps.h"
#include "platform/Geometry.h"
#include "zone/ShapeEdits.h"
#include "zone/ShapeGeometry.h"
#include "zone/Zone.h"

namespace zone {

using Name = StepLabel::Name;

ZoneSession::ZoneSession(std::shared_ptr<ZoneManager> zones, edit::Limits limits)
    : m_model{std::move(zones), {}, {}, 0, {}}, m_history(m_model, limits) {
    m_model.context.currentZone = m_model.zones->lastZoneRead;
    m_model.saved.noteSaved(*m_model.zones);
}

void ZoneSession::chooseZone(int zone) {
    m_model.context.currentZone = zone;
    m_model.context.noteShown(zones());
}

void ZoneSession::showFrame(int frame) {
    m_model.context.shownFrame = frame;
    m_model.context.noteShown(zones());
}

void ZoneSession::setArea(platform::Size area) {
    m_model.zones->videoWidth = area.width;
    m_model.zones->videoHeight = area.height;
}

platform::Point ZoneSession::clamped(platform::Point point) const {
    return clampedTo({zones().videoWidth, zones().videoHeight}, point);
}

bool ZoneSession::hitTest(int zone, int frame, int x, int y) {
    return zones().hitTest(m_model.context, zone, frame, x, y);
}

bool ZoneSession::isHandleAt(int zone, int frame, int x, int y) const {
    const auto found = zones().zone(zone);
    return found && found->isHandleAt(editingOf(zone), frame, x, y, context().handleReach);
}

bool ZoneSession::takesPoint(int zone) const {
    const auto found = zones().zone(zone);
    return found && found->takesPoint(editingOf(zone).selectedPoint);
}

bool ZoneSession::hasPointAt(int zone, int x, int y) const {
    const auto found = zones().zone(zone);
    return found && found->hasPointAt(x, y, context().handleReach);
}

const ZoneEditing& ZoneSession::editingOf(int zone) const {
    static const ZoneEditing kUntouched;
    const auto at = static_cast<std::size_t>(zone);
    return at < context().zones.size() ? context().zones[at] : kUntouched;
}

void ZoneSession::beginGesture(StepLabel label) {
    endGesture();
    m_gestureLabel = label;
    m_gesture.emplace(m_history.begin(label));
}

void ZoneSession::endGesture() {
    m_lastMove = {};
    m_replacedZone = -1;
    m_gestureZones.clear();
    if (m_gesture) {
        History::Gesture gesture = std::move(*m_gesture);
        m_gesture.reset(); // listeners may begin another
        gesture.commit();
    }
}

void ZoneSession::cancelGesture() {
    m_lastMove = {};
    m_replacedZone = -1;
    m_gestureZones.clear();
    if (m_gesture) {
        History::Gesture gesture = std::move(*m_gesture);
        m_gesture.reset();
        m_isPlainEdit = false;
        gesture.cancel();
    }
}

void ZoneSession::run(const StepLabel& label, ZoneOperation operation) {
    if (m_gesture) {
        m_gesture->run(std::move(operation));
        m_gesture->announce();
    } else {
        m_history.run(label, std::move(operation));
    }
}

void ZoneSession::runAlone(const StepLabel& label, ZoneOperation operation) {
    endGesture();
    m_isPlainEdit = false;
    m_history.run(label, std::move(operation));
}

void ZoneSession::edit(const StepLabel& label, FrameRange frames, EditShapes::Edit edit,
                       TrackChanges::Keep keep, const ShapedFrames& shaped) {
    if (!isThere(label.zone, label.frame)) {
        edit(*m_model.zones, m_model.context, nullptr); // which says so in the log
        return;
    }
    m_lastMove = {};
    m_replacedZone = -1;
    beginReach(label);
    if (m_gesture && std::find(m_gestureZones.begin(), m_gestureZones.end(), label.zone) ==
                         m_gestureZones.end()) {
        m_gestureZones.push_back(label.zone);
    }
    run(label, EditShapes(label.zone, frames, std::move(edit), keep, shaped));
}

void ZoneSession::addZone(const std::string& name, int frameCount, const ShapeStretch* shapes) {
    const std::shared_ptr<Zone> zone = Zone::create(frameCount);
    zone->setName(name);
    if (shapes != nullptr) {
        ZoneEditing untouched;
        zone->replaceShapes({untouched}, *shapes);
    }
    const int index = zones().zoneCount();
    runAlone({Name::addZone, index}, ListZone(index, zone, true));
}

void ZoneSession::removeZone(int zone) {
    if (!zones().zone(zone)) {
        m_model.zones->removeZone(zone); // which says so in the log
        return;
    }
    runAlone({Name::removeZone, zone}, ListZone(zone, nullptr));
}

void ZoneSession::duplicateZone(int zone) {
    const std::shared_ptr<const Zone> original = zones().zone(zone);
    if (!original) {
        return;
    }
    const auto copy = std::make_shared<Zone>(*original);
    const auto isTaken = [this](const std::string& name) {
        for (int other = 0; other < zones().zoneCount(); ++other) {
            if (zones().getZoneName(other) == name) {
                return true;
            }
        }
        return false;
    };
    for (int number = 2; number < zones().zoneCount() + 3 && isTaken(copy->name()); ++number) {
        const std::string ending = " " + std::to_string(number);
        const auto room = kMaxNameBytes - ending.size();
        copy->setName(std::string(core::cutUtf8(original->name(), room)) + ending);
    }
    runAlone({Name::addZone, zone + 1}, ListZone(zone + 1, copy));
}

void ZoneSession::renameZone(int zone, const std::string& name) {
    if (!zones().zone(zone)) {
        m_model.zones->setZoneName(zone, name); // which says so in the log
    } else if (const std::string stored = Zone::storedName(name);
               stored != zones().zone(zone)->name()) {
        runAlone({Name::rename, zone}, RenameZone(zone, stored));
    }
}

bool ZoneSession::restore(const ZoneManager& version, bool isKnownToDiffer) {
    std::vector<std::shared_ptr<Zone>> copies;
    for (int index = 0; index < version.zoneCount(); ++index) {
        const std::shared_ptr<const Zone> zone = version.zone(index);
        if (zones().frameCount >= 0 && zone->frameCount() != zones().frameCount) {
            return false;
        }
        copies.push_back(std::make_shared<Zone>(*zone));
    }
    SavedContent now;
    now.noteSaved(zones());
    if (isKnownToDiffer || now.differs(version)) {
        runAlone({Name::restore}, ReplaceZones(std::move(copies)));
    }
    return true;
}

void ZoneSession::setActive(int zone, int frame, bool active) {
    endGesture();
    edit({Name::active, zone, frame}, spreadFrom(zone, frame),
         [=](ZoneManager& zones, EditContext& context, TrackChanges* changes) {
             zones.setActive(context, zone, frame, active, changes);
         });
}

void ZoneSession::moveSelectedPoint(int zone, int frame, int x, int y) {
    const bool hasSelection = zones().zone(zone) && m_model.context.zone(zone).selectedPoint != -1;
    if (isThere(zone, frame) && !hasSelection) {
        return;
    }
    const Move move{zone, frame, hasSelection ? m_model.context.zone(zone).selectedPoint : -1,
                    context().progressChanges};
    const bool repeats = m_gesture && move == m_lastMove;
    edit({Name::movePoint, zone, frame}, spreadFrom(zone, frame),
         [=](ZoneManager& zones, EditContext& context, TrackChanges* changes) {
             zones.moveSelectedPoint(context, zone, frame, x, y, changes);
         },
         repeats ? TrackChanges::Keep::nothingTwice : TrackChanges::Keep::all, {frame});
    if (m_gesture) {
        m_lastMove = move;
    }
}

void ZoneSession::addPoint(int zone, int frame, int x, int y) {
    if (isThere(zone, frame) && !takesPoint(zone)) {
        return;
    }
    noteLastPoint(zone, frame, {x, y});
    const int index = m_lastPoint.index;
    // Where the first one is drawn, the author has a thing in sight.
    const bool isFirst = isThere(zone, frame) && !zones().zone(zone)->hasPoints();
    edit({Name::addPoint, zone, frame}, allFrames(zone),
         [=](ZoneManager& zones, EditContext& context, TrackChanges* changes) {
             zones.addPoint(context, zone, frame, x, y, changes);
             if (changes != nullptr && index > 0) {
                 changes->counts().strays = strayFrames(*zones.zone(zone), frame, index);
             }
         },
         TrackChanges::Keep::all, {isFirst ? frame : -1});
}

void ZoneSession::deletePoint(int zone, int frame, int x, int y) {
    if (isThere(zone, frame) && !hasPointAt(zone, x, y)) {
        return;
    }
    noteLastPoint(zone, frame, {x, y});
    edit({Name::deletePoint, zone, frame}, allFrames(zone),
         [=](ZoneManager& zones, EditContext& context, TrackChanges* changes) {
             zones.deletePoint(context, zone, frame, x, y, changes);
         });
}

void ZoneSession::replaceShapes(const StepLabel& label, NewShapes shapes) {
    const int zone = label.zone;
    const FrameRange frames = shapes.stretch.frames();
    if (!isThere(zone, frames.first) || frames.end > allFrames(zone).end || frames.count() < 1) {
        return;
    }
    const ShapedFrames shaped{shapes.shapedFrame, shapes.released, shapes.followed, shapes.filled};
    if (!m_gesture && changesNothing(zone, shapes)) {
        return;
    }
    const bool repeats =
        m_gesture && m_replacedZone == zone && m_replaced == frames && m_replacedShaped == shaped;
    edit(
        label, frames,
        [zone, shapes = std::move(shapes)](ZoneManager& zones, EditContext& context,
                                           TrackChanges* changes) {
            if (changes->isFirst()) {
                changes->counts().own += shapes.ownFrames;
            }
            zones.replaceShapes(context, zone, shapes.stretch, changes);
            if (shapes.choosesNone) {
                context.zone(zone).selectedPoint = -1;
            }
        },
        repeats ? TrackChanges::Keep::nothingTwice : TrackChanges::Keep::all, shaped);
    if (m_gesture) {
        m_replacedZone = zone;
        m_replaced = frames;
        m_replacedShaped = shaped;
    }
}

std::optional<StepLabel> ZoneSession::undo() {
    const StepLabel* label = m_history.undoLabel();
    const std::optional<StepLabel> step = label ? std::optional(*label) : std::nullopt;
    m_isPlainEdit = m_isPlainEdit && !step;
    (void)m_history.undo();
    return step;
}

std::optional<StepLabel> ZoneSession::redo() {
    const StepLabel* label = m_history.redoLabel();
    const std::optional<StepLabel> step = label ? std::optional(*label) : std::nullopt;
    m_isPlainEdit = m_isPlainEdit && !step;
    (void)m_history.redo();
    return step;
}

edit::Subscription ZoneSession::observe(History::Listener listener) {
    return m_history.observe(std::move(listener));
}

bool ZoneSession::save(const std::string& videoPath) {
    const bool result = m_model.zones->save(videoPath);
    const bool good = zones().lastSaveFailure().empty();
    if (good) {
        m_model.saved.noteSaved(zones());
    }
    m_saveObservers.notify(good);
    return result;
}

edit::Subscription ZoneSession::observeSaves(std::function<void(bool good)> listener) {
    return m_saveObservers.add(std::move(listener));
}

std::shared_ptr<const ZoneManager> ZoneSession::snapshot() {
    std::shared_ptr<const ZoneManager> taken = zones().snapshot();
    // An open gesture may have to be taken back, which must not need memory.
    for (const int zone : m_gestureZones) {
        m_model.zones->zone(zone)->unshare();
    }
    return taken;
}

bool ZoneSession::changesNothing(int zone, const NewShapes& shapes) const {
    const std::set<int>& shaped = editingOf(zone).shapedFrames;
    const bool isReleased = std::any_of(
        shaped.lower_bound(shapes.released.first), shaped.lower_bound(shapes.released.end),
        [&shapes](int frame) { return frame != shapes.shapedFrame; });
    return (shapes.shapedFrame < 0 || shaped.contains(shapes.shapedFrame)) && !isReleased &&
           holdsShapes(*zones().zone(zone), shapes.stretch);
}

bool ZoneSession::isThere(int zone, int frame) const {
    const std::shared_ptr<const Zone> found = zones().zone(zone);
    return found && frame >= 0 && frame < found->frameCount();
}

FrameRange ZoneSession::allFrames(int zone) const {
    const std::shared_ptr<const Zone> found = zones().zone(zone);
    return {0, found ? found->frameCount() : 0};
}

FrameRange ZoneSession::spreadFrom(int zone, int frame) const {
    if (!isThere(zone, frame)) {
        return {}; // whatever number it is
    }
    return {frame, context().progressChanges ? allFrames(zone).end : frame + 1};
}

} // namespace zone
