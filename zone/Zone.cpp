#include "zone/Zone.h"

#include <algorithm>
#include <string_view>

#include <tinyxml2.h>

#include "core/Log.h"
#include "core/Text.h"
#include "zone/ShapeDrawing.h"
#include "zone/ShapeGeometry.h"
#include "zone/ZoneManager.h"
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

bool changesProgress() {
    const std::shared_ptr<ZoneManager> manager = currentZoneManager();
    return manager && manager->progressChanges;
}

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

std::shared_ptr<ZoneShape> Zone::shape(int frame) const {
    if (frame < 0 || frame >= frameCount()) {
        return nullptr;
    }
    const std::size_t index = m_track.indexOf(frame);
    const ShapeRun& run = m_track.run(index);
    if (!run.present) {
        return nullptr;
    }
    auto shape = ZoneShape::createEmpty();
    const auto points = m_track.points(index);
    const Point center = centerOf(frame);
    shape->centerX = center.x;
    shape->centerY = center.y;
    shape->points.assign(points.begin(), points.end());
    shape->active = run.active != 0;
    if (run.edited) {
        shape->recordSize =
            static_cast<std::uint32_t>(kShapeHeaderSize + kPointSize * points.size());
    }
    return shape;
}

bool Zone::isActive(int frame) const {
    // A frame without a shape has an active run.
    return checkFrame(frame, kIsActiveLine) && m_track.run(m_track.indexOf(frame)).active != 0;
}

void Zone::setActive(int frame, bool active) {
    if (!checkFrame(frame, kSetActiveLine)) {
        return;
    }
    const RunRange range = spreadFrom(frame);
    for (std::size_t run = range.first; run < range.end; ++run) {
        m_track.makePresent(run);
        m_track.setActive(run, active);
    }
}

void Zone::draw(int frame, platform::Canvas& canvas, int originX, int originY) {
    if (!checkFrame(frame, kDrawLine)) {
        return;
    }
    const std::size_t run = m_track.indexOf(frame);
    if (!m_track.run(run).present) {
        return;
    }
    m_centers[frame] = drawShape(canvas, m_track.points(run), m_track.run(run).active != 0,
                                 {originX, originY}, m_selectedPoint);
}

bool Zone::hitTest(int frame, int x, int y) {
    if (!checkFrame(frame, kHitTestLine)) {
        return false;
    }
    const std::size_t run = m_track.indexOf(frame);
    if (!m_track.run(run).present) {
        return false;
    }
    m_selectedPoint = hitHandle(m_track.points(run), centerOf(frame), {x, y});
    return m_selectedPoint != -1;
}

void Zone::endMove(int frame, int, int) const {
    (void)checkFrame(frame, kEndMoveLine);
}

void Zone::moveSelectedPoint(int frame, int x, int y) {
    if (!checkFrame(frame, kMoveSelectedPointLine) || m_selectedPoint == -1) {
        return;
    }
    const RunRange range = spreadFrom(frame);
    const bool shifts = m_selectedPoint == static_cast<int>(m_track.points(range.first).size());
    if (!shifts) {
        moveHandle(range, {x, y});
        return;
    }
    const Point center = centerOf(frame);
    const Point delta{wrappedDifference(x, center.x), wrappedDifference(y, center.y)};
    m_track.shift(range.first, range.end, delta);
}

void Zone::moveHandle(RunRange range, Point to) {
    const Point clamped = clampedToArea(to.x, to.y);
    const auto handle = static_cast<std::size_t>(m_selectedPoint);
    bool reported = false; // thousands of frames are worth one line
    for (std::size_t run = range.first; run < range.end; ++run) {
        m_track.makePresent(run);
        const std::span<Point> points = m_track.points(run);
        if (m_selectedPoint >= 0 && handle < points.size()) {
            points[handle] = clamped;
        } else if (handle == points.size()) {
            // Here the selected handle is the centre's, wherever this frame's last draw left it.
            const std::size_t added = shiftByCenters(run, to);
            run += added;
            range.end += added;
        } else if (!reported) {
            reportPointIndex();
            reported = true;
        }
    }
}

std::size_t Zone::shiftByCenters(std::size_t run, Point to) {
    const std::size_t runsBefore = m_track.runCount();
    const int end = m_track.endFrame(run);
    for (int frame = m_track.run(run).firstFrame; frame < end; ++run) {
        const Point center = centerOf(frame);
        frame = sameCenterUntil(frame, end);
        m_track.splitAt(frame);
        shiftPoints(m_track.points(run),
                    {wrappedDifference(to.x, center.x), wrappedDifference(to.y, center.y)});
    }
    return m_track.runCount() - runsBefore;
}

int Zone::sameCenterUntil(int frame, int end) const {
    const Point center = centerOf(frame);
    auto next = m_centers.upper_bound(frame);
    for (++frame; frame < end; ++frame) {
        const bool isDrawn = next != m_centers.end() && next->first == frame;
        if ((isDrawn ? next->second : Point{}) != center) {
            return frame;
        }
        if (isDrawn) {
            ++next;
        } else { // all frames up to the next drawn one are as this one
            frame = next == m_centers.end() ? end : std::min(end, next->first) - 1;
        }
    }
    return end;
}

void Zone::addPoint(int frame, int x, int y) {
    if (!checkFrame(frame, kAddPointLine)) {
        return;
    }
    const int added =
        insertPosition(m_selectedPoint, m_track.points(m_track.indexOf(frame)).size());
    m_track.insertPointEverywhere(m_selectedPoint, {x, y});
    if (added != -1) {
        m_selectedPoint = added;
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

Zone::RunRange Zone::spreadFrom(int frame) {
    const std::size_t first = m_track.splitAt(frame);
    return {first, changesProgress() ? m_track.runCount() : m_track.splitAt(frame + 1)};
}

Point Zone::centerOf(int frame) const {
    const auto found = m_centers.find(frame);
    return found == m_centers.end() ? Point{} : found->second;
}

} // namespace zone
