#include "zone/Zone.h"

#include <algorithm>
#include <string_view>

#include <tinyxml2.h>

#include "core/Log.h"
#include "core/Text.h"
#include "zone/ShapeGeometry.h"
#include "zone/ShapeRecord.h"
#include "zone/StepReach.h"
#include "zone/TrackChanges.h"
#include "zone/ZoneXml.h"

namespace zone {
namespace {

using platform::Point;

// Support looks messages up by these places; they do not follow this file's lines.
constexpr const char* kSource = "..\\Zone.cpp";
constexpr int kIsActiveLine = 62;
constexpr int kSetActiveLine = 75;
constexpr int kDrawLine = 102;
constexpr int kHitTestLine = 112;
constexpr int kEndMoveLine = 126;
constexpr int kMoveSelectedPointLine = 136;
constexpr int kAddPointLine = 171;
constexpr int kDeletePointLine = 203;

} // namespace

std::shared_ptr<Zone> Zone::create(int frameCount) {
    auto zone = std::make_shared<Zone>();
    zone->m_track.own().resize(frameCount);
    return zone;
}

std::shared_ptr<Zone> Zone::createFromXml(const tinyxml2::XMLElement& element) {
    auto zone = std::make_shared<Zone>();
    for (const auto* child = element.FirstChildElement(); child;
         child = child->NextSiblingElement()) {
        if (std::string_view(child->Name()) == "Name") {
            zone->setName(firstText(*child));
        } else {
            core::Log::get()->Error("Unknown zone node type");
        }
    }
    return zone;
}

std::string Zone::storedName(const std::string& name) {
    return std::string(core::cutUtf8(std::string_view(name.c_str()), kMaxNameBytes));
}

void Zone::setName(const std::string& name) {
    m_name = storedName(name);
}

std::optional<std::span<const Point>> Zone::points(int frame) const {
    if (frame < 0 || frame >= frameCount()) {
        return std::nullopt;
    }
    const std::size_t run = m_track->indexOf(frame);
    return m_track->run(run).present ? std::optional(m_track->points(run)) : std::nullopt;
}

std::optional<ZoneShape> Zone::shape(int frame) const {
    const auto found = points(frame);
    if (!found) {
        return std::nullopt;
    }
    const ShapeRun& run = m_track->run(m_track->indexOf(frame));
    ZoneShape shape{0, {found->begin(), found->end()}, run.active != 0};
    if (run.edited) {
        shape.recordSize =
            static_cast<std::uint32_t>(kShapeHeaderSize + kPointSize * found->size());
    }
    return shape;
}

bool Zone::isActive(int frame) const {
    // A frame without a shape has an active run.
    return checkFrame(frame, kIsActiveLine) && m_track->run(m_track->indexOf(frame)).active != 0;
}

void Zone::setActive(const EditScope& scope, int frame, bool active) {
    if (!checkFrame(frame, kSetActiveLine)) {
        return;
    }
    ShapeTrack& track = m_track.own();
    const RunRange range = spreadFrom(scope, frame);
    if (scope.changes) {
        countOwn(scope, range, true);
        scope.changes->keepFlags(track, range, active);
    }
    for (std::size_t run = range.first; run < range.end; ++run) {
        track.makePresent(run);
        track.setActive(run, active);
    }
}

void Zone::draw(int frame, platform::Canvas& canvas, const Placement& place, int selectedPoint,
                NumberFont font, LineEdge edge) const {
    if (!checkFrame(frame, kDrawLine)) {
        return;
    }
    const std::size_t run = m_track->indexOf(frame);
    if (m_track->run(run).present) {
        drawShape(canvas, m_track->points(run), m_track->run(run).active != 0, place, selectedPoint,
                  font, edge);
    }
}

bool Zone::hitTest(ZoneEditing& editing, int frame, int x, int y, double reach) const {
    if (!checkFrame(frame, kHitTestLine)) {
        return false;
    }
    const std::size_t run = m_track->indexOf(frame);
    if (!m_track->run(run).present) {
        return false;
    }
    editing.selectedPoint = hitHandle(m_track->points(run), editing.centerOf(frame), {x, y}, reach);
    return editing.selectedPoint != -1;
}

bool Zone::isHandleAt(const ZoneEditing& editing, int frame, int x, int y, double reach) const {
    const auto shown = points(frame);
    return shown && hitHandle(*shown, editing.centerOf(frame), {x, y}, reach) != -1;
}

void Zone::endMove(int frame, int, int) const {
    (void)checkFrame(frame, kEndMoveLine);
}

void Zone::moveSelectedPoint(const EditScope& scope, int frame, int x, int y) {
    const int handle = scope.editing.selectedPoint;
    if (!checkFrame(frame, kMoveSelectedPointLine) || handle == -1) {
        return;
    }
    ShapeTrack& track = m_track.own();
    const RunRange range = spreadFrom(scope, frame);
    countOwn(scope, range, false);
    if (handle != static_cast<int>(track.points(range.first).size())) {
        moveHandle(scope, range, {x, y});
        return;
    }
    const Point center = scope.editing.centerOf(frame);
    const Point delta{wrappedDifference(x, center.x), wrappedDifference(y, center.y)};
    if (scope.changes) {
        scope.changes->keepShift(m_track, range, delta);
    }
    track.shift(range, delta);
}

void Zone::moveHandle(const EditScope& scope, RunRange range, Point to) {
    const Point clamped = clampedTo(scope.area, to);
    const int selected = scope.editing.selectedPoint;
    const auto handle = static_cast<std::size_t>(selected);
    ShapeTrack& track = m_track.own();
    if (scope.changes) {
        // An index below 0 is no point: no run has it, so the whole track is kept.
        scope.changes->keepPoint(m_track, range, handle, clamped);
    }
    bool reported = false; // thousands of frames are worth one line
    for (std::size_t run = range.first; run < range.end; ++run) {
        track.makePresent(run);
        const std::span<Point> points = track.points(run);
        if (selected >= 0 && handle < points.size()) {
            points[handle] = clamped;
        } else if (handle == points.size()) {
            // Here the selected handle is the centre's, wherever this frame was last shown with it.
            const std::size_t added = shiftByCenters(scope.editing, run, to);
            run += added;
            range.end += added;
        } else if (!reported) {
            reportPointIndex();
            reported = true;
        }
    }
}

std::size_t Zone::shiftByCenters(const ZoneEditing& editing, std::size_t run, Point to) {
    ShapeTrack& track = m_track.own();
    const std::size_t runsBefore = track.runCount();
    const int end = track.endFrame(run);
    for (int frame = track.run(run).firstFrame; frame < end; ++run) {
        const Point center = editing.centerOf(frame);
        frame = editing.sameCenterUntil(frame, end);
        track.splitAt(frame);
        shiftPoints(track.points(run),
                    {wrappedDifference(to.x, center.x), wrappedDifference(to.y, center.y)});
    }
    return track.runCount() - runsBefore;
}

void Zone::addPoint(const EditScope& scope, int frame, int x, int y) {
    if (!checkFrame(frame, kAddPointLine)) {
        return;
    }
    int& selected = scope.editing.selectedPoint;
    ShapeTrack& track = m_track.own();
    const int added = insertPosition(selected, track.points(track.indexOf(frame)).size());
    track.makeRoom(); // what is kept below must have happened
    if (scope.changes) {
        scope.changes->keepInsert(m_track, selected, {x, y});
    }
    const int frames = track.insertPointEverywhere(selected, {x, y});
    if (scope.changes) {
        scope.changes->counts() += {0, frames, frames < frameCount()};
    }
    if (added != -1) {
        selected = added;
    }
}

void Zone::deletePoint(const EditScope& scope, int frame, int x, int y, bool orSame) {
    if (!checkFrame(frame, kDeletePointLine)) {
        return;
    }
    if (!hasPointAt(x, y, scope.handleReach)) {
        return;
    }
    ShapeTrack& track = m_track.own();
    const int same = hitPoint(track.points(track.indexOf(frame)), {x, y}, scope.handleReach);
    FrameCounts counts;
    for (std::size_t run = 0; run < track.runCount(); ++run) {
        const bool hasSame = same != -1 && same < static_cast<int>(track.points(run).size());
        int hit = hitPoint(track.points(run), {x, y}, scope.handleReach);
        if (hasSame && orSame) {
            hit = same;
        }
        const bool isOther = hasSame && hit != same;
        counts.isPartial = counts.isPartial || isOther;
        if (hit == -1) {
            continue;
        }
        if (scope.changes) {
            scope.changes->keepRemoval(track, run, static_cast<std::size_t>(hit));
        }
        track.removePoint(run, static_cast<std::size_t>(hit));
        counts.changed += isOther ? 0 : track.framesOf(run);
    }
    if (scope.changes) {
        scope.changes->counts() += counts;
    }
}

void Zone::putShape(const EditScope& scope, int frame, const ZoneShape& shape) {
    EditScope alone = scope;
    alone.progressChanges = false;
    const std::size_t run = spreadFrom(alone, frame).first;
    ShapeTrack& track = m_track.own();
    if (scope.changes) {
        scope.changes->keepShape(track, run);
    }
    track.setPresent(run, true);
    track.setActive(run, shape.active);
    track.setEdited(run, shape.recordSize > 0);
    std::copy(shape.points.begin(), shape.points.end(), track.points(run).begin());
}

void Zone::replaceShapes(const EditScope& scope, const ShapeStretch& stretch) {
    if (scope.changes) {
        scope.changes->keepTrack(m_track);
    }
    m_track.own().replace(stretch.frames().first, stretch.shapes());
}

bool Zone::hasPoints() const {
    for (std::size_t run = 0; run < m_track->runCount(); ++run) {
        if (m_track->run(run).pointCount > 0) {
            return true;
        }
    }
    return false;
}

bool Zone::takesPoint(int selectedPoint) const {
    for (std::size_t run = 0; run < m_track->runCount(); ++run) {
        if (!m_track->run(run).present ||
            insertPosition(selectedPoint, m_track->points(run).size()) != -1) {
            return true;
        }
    }
    return false;
}

bool Zone::hasPointAt(int x, int y, double reach) const {
    for (std::size_t run = 0; run < m_track->runCount(); ++run) {
        if (hitPoint(m_track->points(run), {x, y}, reach) != -1) {
            return true;
        }
    }
    return false;
}

void Zone::mapPoints(const std::function<Point(Point)>& map) {
    ShapeTrack& track = m_track.own();
    for (std::size_t run = 0; run < track.runCount(); ++run) {
        for (Point& point : track.points(run)) {
            point = map(point);
        }
    }
}

void Zone::revert(TrackChanges& changes) noexcept {
    changes.revert(m_track);
}

void Zone::redo(TrackChanges& changes) {
    changes.redo(m_track);
}

void Zone::fillTo(int frameCount) {
    if (frameCount > m_track->frameCount()) {
        m_track.own().resize(frameCount);
    }
}

bool Zone::checkFrame(int frame, int line) const {
    const bool good = frame >= 0 && frame < m_track->frameCount();
    if (!good) {
        core::Log::get()->Error("%s:%d Frame index is invalid", kSource, line);
    }
    return good;
}

void Zone::countOwn(const EditScope& scope, RunRange range, bool isAboutFlags) const {
    if (!scope.changes || !scope.changes->isFirst()) {
        return;
    }
    const ShapeRun& edited = m_track->run(range.first);
    const std::span<const Point> points = m_track->points(range.first);
    for (std::size_t run = range.first + 1; run < range.end; ++run) {
        const std::span<const Point> own = m_track->points(run);
        const bool differs =
            isAboutFlags ? m_track->run(run).active != edited.active
                         : !std::equal(own.begin(), own.end(), points.begin(), points.end());
        if (differs && !own.empty()) {
            scope.changes->counts().own += m_track->framesOf(run);
        }
    }
}

RunRange Zone::spreadFrom(const EditScope& scope, int frame) {
    ShapeTrack& track = m_track.own();
    const auto splitAt = [&](int at) {
        return scope.changes ? scope.changes->splitAt(track, at) : track.splitAt(at);
    };
    const std::size_t first = splitAt(frame);
    return {first, scope.progressChanges ? track.runCount() : splitAt(frame + 1)};
}

} // namespace zone
