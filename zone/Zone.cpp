#include "zone/Zone.h"

#include <string_view>

#include <tinyxml2.h>

#include "core/Log.h"
#include "core/Text.h"
#include "zone/ShapeGeometry.h"
#include "zone/ShapeRecord.h"
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
    zone->m_track.resize(frameCount);
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

void Zone::setName(const std::string& name) {
    m_name = core::cutUtf8(std::string_view(name.c_str()), kMaxNameBytes);
}

std::optional<std::span<const Point>> Zone::points(int frame) const {
    if (frame < 0 || frame >= frameCount()) {
        return std::nullopt;
    }
    const std::size_t run = m_track.indexOf(frame);
    return m_track.run(run).present ? std::optional(m_track.points(run)) : std::nullopt;
}

std::optional<ZoneShape> Zone::shape(int frame) const {
    const auto found = points(frame);
    if (!found) {
        return std::nullopt;
    }
    const ShapeRun& run = m_track.run(m_track.indexOf(frame));
    ZoneShape shape{0, {found->begin(), found->end()}, run.active != 0};
    if (run.edited) {
        shape.recordSize =
            static_cast<std::uint32_t>(kShapeHeaderSize + kPointSize * found->size());
    }
    return shape;
}

bool Zone::isActive(int frame) const {
    // A frame without a shape has an active run.
    return checkFrame(frame, kIsActiveLine) && m_track.run(m_track.indexOf(frame)).active != 0;
}

void Zone::setActive(const EditScope& scope, int frame, bool active) {
    if (!checkFrame(frame, kSetActiveLine)) {
        return;
    }
    const RunRange range = spreadFrom(scope, frame);
    for (std::size_t run = range.first; run < range.end; ++run) {
        m_track.makePresent(run);
        m_track.setActive(run, active);
    }
}

void Zone::draw(int frame, platform::Canvas& canvas, const Placement& place, int selectedPoint,
                NumberFont font) const {
    if (!checkFrame(frame, kDrawLine)) {
        return;
    }
    const std::size_t run = m_track.indexOf(frame);
    if (m_track.run(run).present) {
        drawShape(canvas, m_track.points(run), m_track.run(run).active != 0, place, selectedPoint,
                  font);
    }
}

bool Zone::hitTest(ZoneEditing& editing, int frame, int x, int y) const {
    if (!checkFrame(frame, kHitTestLine)) {
        return false;
    }
    const std::size_t run = m_track.indexOf(frame);
    if (!m_track.run(run).present) {
        return false;
    }
    editing.selectedPoint = hitHandle(m_track.points(run), editing.centerOf(frame), {x, y});
    return editing.selectedPoint != -1;
}

void Zone::endMove(int frame, int, int) const {
    (void)checkFrame(frame, kEndMoveLine);
}

void Zone::moveSelectedPoint(const EditScope& scope, int frame, int x, int y) {
    const int handle = scope.editing.selectedPoint;
    if (!checkFrame(frame, kMoveSelectedPointLine) || handle == -1) {
        return;
    }
    const RunRange range = spreadFrom(scope, frame);
    if (handle != static_cast<int>(m_track.points(range.first).size())) {
        moveHandle(scope, range, {x, y});
        return;
    }
    const Point center = scope.editing.centerOf(frame);
    const Point delta{wrappedDifference(x, center.x), wrappedDifference(y, center.y)};
    m_track.shift(range.first, range.end, delta);
}

void Zone::moveHandle(const EditScope& scope, RunRange range, Point to) {
    const Point clamped = clampedTo(scope.area, to);
    const int selected = scope.editing.selectedPoint;
    const auto handle = static_cast<std::size_t>(selected);
    bool reported = false; // thousands of frames are worth one line
    for (std::size_t run = range.first; run < range.end; ++run) {
        m_track.makePresent(run);
        const std::span<Point> points = m_track.points(run);
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
    const std::size_t runsBefore = m_track.runCount();
    const int end = m_track.endFrame(run);
    for (int frame = m_track.run(run).firstFrame; frame < end; ++run) {
        const Point center = editing.centerOf(frame);
        frame = editing.sameCenterUntil(frame, end);
        m_track.splitAt(frame);
        shiftPoints(m_track.points(run),
                    {wrappedDifference(to.x, center.x), wrappedDifference(to.y, center.y)});
    }
    return m_track.runCount() - runsBefore;
}

void Zone::addPoint(const EditScope& scope, int frame, int x, int y) {
    if (!checkFrame(frame, kAddPointLine)) {
        return;
    }
    int& selected = scope.editing.selectedPoint;
    const int added = insertPosition(selected, m_track.points(m_track.indexOf(frame)).size());
    m_track.insertPointEverywhere(selected, {x, y});
    if (added != -1) {
        selected = added;
    }
}

void Zone::deletePoint(int frame, int x, int y) {
    if (!checkFrame(frame, kDeletePointLine)) {
        return;
    }
    for (std::size_t run = 0; run < m_track.runCount(); ++run) {
        const int hit = hitPoint(m_track.points(run), {x, y});
        if (hit != -1) {
            m_track.removePoint(run, static_cast<std::size_t>(hit));
        }
    }
}

void Zone::fillTo(int frameCount) {
    if (frameCount > m_track.frameCount()) {
        m_track.resize(frameCount);
    }
}

bool Zone::checkFrame(int frame, int line) const {
    const bool good = frame >= 0 && frame < m_track.frameCount();
    if (!good) {
        core::Log::get()->Error("%s:%d Frame index is invalid", kSource, line);
    }
    return good;
}

Zone::RunRange Zone::spreadFrom(const EditScope& scope, int frame) {
    const std::size_t first = m_track.splitAt(frame);
    return {first, scope.progressChanges ? m_track.runCount() : m_track.splitAt(frame + 1)};
}

} // namespace zone
