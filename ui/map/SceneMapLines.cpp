// The lines of the map: those that lead on, those that lead back from or to the chosen branch, and
// the one that the author is drawing.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <utility>
#include <vector>

#include "platform/Geometry.h"
#include "platform/Path.h"
#include "scene/Action.h"
#include "ui/map/MapColors.h"
#include "ui/map/SceneMap.h"

namespace ui {

using map::MapAction;
using platform::Color;
using platform::PointF;

namespace {

constexpr Color kAccent = 0xFF1D63AD;
constexpr Color kFaint = 0x61000000; ///< of lines away from the chosen branch
constexpr double kDash = 5;
constexpr double kGap = 3;
constexpr int kLane = 14; ///< of lines that lead back, below the nodes
constexpr int kLaneWidth = 6;
constexpr int kLanes = 4;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// Whether one of the ends, or what is between them, may be in the area.
bool touches(PointF from, PointF to, const platform::Rect& area) {
    return std::max(from.x, to.x) >= area.left && std::min(from.x, to.x) <= area.right &&
           std::max(from.y, to.y) >= area.top && std::min(from.y, to.y) <= area.bottom;
}

/// Leaves out what is not in the area.
platform::Path dashed(const platform::Path& path, const platform::Rect& area) {
    platform::Path result;
    for (const platform::Path::Part& part : path.parts()) {
        bool isDrawn = true;
        double left = kDash; // of the dash or gap
        result.moveTo(part.points.front());
        for (std::size_t i = 1; i < part.points.size(); ++i) {
            const PointF from = part.points[i - 1];
            const PointF to = part.points[i];
            if (!touches(from, to, area)) {
                result.moveTo(to);
                continue;
            }
            const double length = std::hypot(to.x - from.x, to.y - from.y);
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

} // namespace

void SceneMap::paintLines(platform::Canvas& canvas, bool near) const {
    for (const map::MapLine& line : layout().lines) {
        const MapAction& action = m_scene->branches[at(line.branch)].actions[at(line.action)];
        if (near != (line.branch == m_chosen || action.branch == m_chosen)) {
            continue;
        }
        std::vector<PointF> points;
        Rect around = inWindow(line.points.front().x, line.points.front().y, 0, 0);
        for (const map::MapPoint& point : line.points) {
            const Rect place = inWindow(point.x, point.y, 0, 0);
            points.push_back({place.left + 0.5, place.top + 0.5});
            around = {std::min(around.left, place.left), std::min(around.top, place.top - 8),
                      std::max(around.right, place.left + 1),
                      std::max(around.bottom, place.top + 8)};
        }
        const Rect seen = around.intersected(canvas.clip());
        if (seen.width() <= 0 || seen.height() <= 0) {
            continue;
        }
        platform::Path path;
        path.moveTo(points.front());
        for (std::size_t i = 1; i < points.size(); ++i) {
            const double half = (points[i].x - points[i - 1].x) / 2;
            if (i % 2 == 0) {
                path.lineTo(points[i]);
            } else {
                path.curveTo({points[i - 1].x + half, points[i - 1].y},
                             {points[i].x - half, points[i].y}, points[i]);
            }
        }
        paintLine(canvas, path, action, near);
        const Color color = kKindColors.at(kindOf(action));
        paintHead(canvas, points.back(), {1, 0}, near ? color : (color & 0x00FFFFFFU) | kFaint);
    }
}

void SceneMap::paintLine(platform::Canvas& canvas, const platform::Path& path,
                         const MapAction& action, bool near) {
    const Color color = kKindColors.at(kindOf(action));
    const bool isRandom = action.type == scene::Action::kRandomAction;
    canvas.fillPath((isRandom ? dashed(path, canvas.clip()) : path).stroked(near ? 2.25 : 1.5),
                    near ? color : (color & 0x00FFFFFFU) | kFaint);
}

void SceneMap::paintHead(platform::Canvas& canvas, PointF tip, PointF along, Color color) {
    platform::Path head;
    head.addArrowHead({tip.x - 10 * along.x, tip.y - 10 * along.y}, tip, 8, 8);
    canvas.fillPath(head, color);
}

/// Only those from and to the chosen branch: all of them would hide the others.
void SceneMap::paintBackLines(platform::Canvas& canvas) const {
    const std::vector<map::MapNode>& nodes = layout().nodes;
    std::set<std::pair<int, int>> drawn;
    for (const map::MapLine& line : layout().lines) {
        drawn.emplace(line.branch, line.action);
    }
    int order = 0;
    for (int branch = 0; branch < static_cast<int>(nodes.size()); ++branch) {
        const std::vector<MapAction>& actions = m_scene->branches[at(branch)].actions;
        for (int action = 0; action < static_cast<int>(actions.size()); ++action) {
            const int target = actions[at(action)].branch;
            if (target >= 0 && (branch == m_chosen || target == m_chosen) &&
                !drawn.contains({branch, action})) {
                paintBackLine(canvas, branch, action, order++);
            }
        }
    }
}

/// From the row down to a lane below the nodes and lines on the way, and up into the target. Those
/// that come one after the other keep apart.
void SceneMap::paintBackLine(platform::Canvas& canvas, int branch, int action, int order) const {
    const MapAction& content = m_scene->branches[at(branch)].actions[at(action)];
    const map::MapNode& from = layout().nodes[at(branch)];
    const map::MapNode& to = layout().nodes[at(content.branch)];
    const int aside = order % kLanes * kLaneWidth;
    const int right = std::max(from.x + from.width, to.x + to.width);
    int lane = 0;
    for (const map::MapNode& node : layout().nodes) {
        const bool isBetween = node.x < right && node.x + node.width > std::min(from.x, to.x);
        if (isBetween && node.isReached == (from.isReached && to.isReached)) {
            lane = std::max(lane, node.y + node.height);
        }
    }
    for (const map::MapLine& line : layout().lines) {
        for (const map::MapPoint& point : line.points) {
            const bool isBetween = point.x < right && point.x > std::min(from.x, to.x);
            lane = isBetween ? std::max(lane, point.y) : lane;
        }
    }
    lane = std::max({lane, from.y + from.height, to.y + to.height}) + kLane + aside;
    const int exit = from.y + map::exitOf(form(), action);
    const auto point = [this](int x, int y) {
        const Rect place = inWindow(x, y, 0, 0);
        return PointF{place.left + 0.5, place.top + 0.5};
    };
    const int turn = from.x + from.width + kLane - aside / 2;
    const int end = to.x + to.width / 2 + aside;
    const PointF tip = point(end, to.y + to.height);
    platform::Path path;
    path.moveTo(point(from.x + from.width, exit));
    path.lineTo(point(turn, exit));
    path.lineTo(point(turn, lane));
    path.lineTo(point(end, lane));
    path.lineTo({tip.x, tip.y + 8});
    paintLine(canvas, path, content, true);
    paintHead(canvas, tip, {0, -1}, kKindColors.at(kindOf(content)));
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
    platform::Path path;
    path.moveTo(from);
    path.curveTo({from.x + half, from.y}, {to.x - half, to.y}, to);
    canvas.fillPath(path.stroked(2.25), kAccent);
    paintHead(canvas, to, {1, 0}, kAccent);
    const Rect target = placeOf(branchAt(m_pointer));
    canvas.fillFrame(target, {3, 3, 3, 3}, kAccent);
}

} // namespace ui
