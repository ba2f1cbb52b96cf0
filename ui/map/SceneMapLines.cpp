// The lines of the map: those that lead on, those that lead back from or to the chosen branch, and
// the one that the author is drawing.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "map/BackLines.h"
#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/Path.h"
#include "scene/Action.h"
#include "ui/map/MapColors.h"
#include "ui/map/SceneMap.h"

namespace ui {

using map::MapAction;
using platform::Color;
using platform::Path;
using platform::PointF;
using platform::Rect;
using toolkit::Tone;

namespace {

constexpr Color kFaint = 0x61; ///< alpha of lines away from the chosen branch
constexpr double kWidth = 1.5;
constexpr double kNearWidth = 2.25;
constexpr double kDash = 5;
constexpr double kGap = 3;
constexpr double kHead = 8; ///< length and width
constexpr double kCorner = 8;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// Whether one of the ends, or what is between them, may be in the area.
bool touches(PointF from, PointF to, const Rect& area) {
    return std::max(from.x, to.x) >= area.left - kHead &&
           std::min(from.x, to.x) <= area.right + kHead &&
           std::max(from.y, to.y) >= area.top - kHead &&
           std::min(from.y, to.y) <= area.bottom + kHead;
}

/// The dashes in the area. Each part begins with one, so that they stay where they are when
/// another area is painted.
Path dashed(const Path& path, const Rect& area) {
    Path result;
    for (const Path::Part& part : path.parts()) {
        bool isDrawn = true;
        double left = kDash; // of the dash or gap
        result.moveTo(part.points.front());
        for (std::size_t i = 1; i < part.points.size(); ++i) {
            const PointF from = part.points[i - 1];
            const PointF to = part.points[i];
            const double length = std::hypot(to.x - from.x, to.y - from.y);
            if (!touches(from, to, area)) {
                const double rest =
                    std::fmod(length + (isDrawn ? kDash : kDash + kGap) - left, kDash + kGap);
                isDrawn = rest < kDash;
                left = (isDrawn ? kDash : kDash + kGap) - rest;
                result.moveTo(to);
                continue;
            }
            double done = 0;
            while (length - done > left) {
                done += left;
                const double share = done / length;
                const PointF end{from.x + (to.x - from.x) * share,
                                 from.y + (to.y - from.y) * share};
                isDrawn ? result.lineTo(end) : result.moveTo(end);
                isDrawn = !isDrawn;
                left = isDrawn ? kDash : kGap;
            }
            left -= length - done;
            if (isDrawn) {
                result.lineTo(to);
            }
        }
    }
    return result;
}

/// A way with right angles, its corners round.
Path rounded(const std::vector<PointF>& corners) {
    Path path;
    path.moveTo(corners.front());
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        const PointF corner = corners[i];
        const auto towards = [&](PointF end) {
            const double length = std::hypot(end.x - corner.x, end.y - corner.y);
            const double share = length > 0 ? std::min(kCorner, length / 2) / length : 0;
            return PointF{corner.x + (end.x - corner.x) * share,
                          corner.y + (end.y - corner.y) * share};
        };
        const PointF in = towards(corners[i - 1]);
        const PointF out = towards(corners[i + 1]);
        const auto bend = [&](PointF end) {
            return PointF{corner.x + (end.x - corner.x) * 0.45,
                          corner.y + (end.y - corner.y) * 0.45};
        };
        path.lineTo(in);
        path.curveTo(bend(in), bend(out), out);
    }
    path.lineTo(corners.back());
    return path;
}

Color faintIf(bool isFaint, Color color) {
    return isFaint ? (color & 0x00FFFFFFU) | (kFaint << 24U) : color;
}

void paintHead(platform::Canvas& canvas, PointF tip, PointF along, Color color) {
    Path head;
    head.addArrowHead({tip.x - 10 * along.x, tip.y - 10 * along.y}, tip, kHead, kHead);
    canvas.fillPath(head, color);
}

} // namespace

PointF SceneMap::pointInWindow(const map::MapPoint& point) const {
    const Rect place = inWindow(point.x, point.y, 0, 0);
    return {place.left + 0.5, place.top + 0.5};
}

Tone SceneMap::toneOf(const map::MapLine& line) const {
    return toneOfKind(m_scene->branches[at(line.branch)].actions[at(line.action)].type);
}

void SceneMap::paintLines(platform::Canvas& canvas, bool near) const {
    const bool isFolded = !layout().chains.empty();
    for (const map::MapLine& line : layout().lines) {
        const int target = m_scene->branches[at(line.branch)].actions[at(line.action)].branch;
        const int from = isFolded ? faceOf(line.branch) : line.branch;
        const int to = isFolded ? faceOf(target) : target;
        if (near == (from == m_chosen || to == m_chosen)) {
            paintLine(canvas, line, near);
        }
    }
}

/// Only the pieces that may be seen: lines can be much longer than the view.
void SceneMap::paintLine(platform::Canvas& canvas, const map::MapLine& line, bool near) const {
    const Rect& area = canvas.clip();
    Path path;
    bool isOn = false; // the path has come to this point
    PointF from = pointInWindow(line.points.front());
    for (std::size_t i = 1; i < line.points.size(); ++i) {
        const PointF to = pointInWindow(line.points[i]);
        const bool isSeen = touches(from, to, area);
        const bool isCurve = i % 2 != 0; // dashes begin anew with each curve
        if (isSeen) {
            if (!isOn || isCurve) {
                path.moveTo(from);
            }
            const double half = (to.x - from.x) / 2;
            if (i % 2 == 0) {
                path.lineTo(to);
            } else {
                path.curveTo({from.x + half, from.y}, {to.x - half, to.y}, to);
            }
        }
        isOn = isSeen;
        from = to;
    }
    if (path.parts().empty()) {
        return;
    }
    const MapAction& action = m_scene->branches[at(line.branch)].actions[at(line.action)];
    const Color ink = faintIf(!near, color(toneOf(line)));
    const bool isRandom = action.type == scene::Action::kRandomAction;
    canvas.fillPath((isRandom ? dashed(path, area) : path).stroked(near ? kNearWidth : kWidth),
                    ink);
    paintHead(canvas, from, {1, 0}, ink);
}

/// Only those from and to the chosen branch: all of them would hide the others.
void SceneMap::paintBackLines(platform::Canvas& canvas) const {
    if (!m_backLines) {
        m_backLines = map::backLinesOf(*m_scene, layout(), form(), m_chosen);
    }
    for (const map::MapLine& line : *m_backLines) {
        std::vector<PointF> corners;
        for (const map::MapPoint& point : line.points) {
            corners.push_back(pointInWindow(point));
        }
        const MapAction& action = m_scene->branches[at(line.branch)].actions[at(line.action)];
        const PointF tip = corners.back();
        const double down = tip.y > corners[corners.size() - 2].y ? 1 : -1;
        corners.back().y -= down * (kHead - 1); // the line ends inside the head
        const Path path = rounded(corners);
        const bool isRandom = action.type == scene::Action::kRandomAction;
        canvas.fillPath((isRandom ? dashed(path, canvas.clip()) : path).stroked(kNearWidth),
                        color(toneOf(line)));
        paintHead(canvas, tip, {0, down}, color(toneOf(line)));
    }
}

void SceneMap::paintLink(platform::Canvas& canvas) const {
    if (m_linked < 0 || !m_isDragged) {
        return;
    }
    const Rect box = placeOf(m_chosen);
    const double exit = map::exitOf(form(), m_linked) * scale();
    const PointF from{box.right + 0.5, std::floor(box.top + exit) + 0.5};
    const PointF to{m_pointer.x + 0.5, m_pointer.y + 0.5};
    const double half = std::max(30.0, std::abs(to.x - from.x) / 2);
    Path path;
    path.moveTo(from);
    path.curveTo({from.x + half, from.y}, {to.x - half, to.y}, to);
    canvas.fillPath(path.stroked(kNearWidth), color(Tone::accent));
    paintHead(canvas, to, {1, 0}, color(Tone::accent));
    const Rect target = placeOf(branchAt(m_pointer));
    if (!target.isEmpty()) {
        paintEdge(canvas, target, 3, color(Tone::accent));
    }
}

} // namespace ui
