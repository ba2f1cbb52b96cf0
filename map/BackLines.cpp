#include "map/BackLines.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace map {
namespace {

constexpr int kBelow = 14; ///< from nodes and lines down to the first lane
constexpr int kLaneWidth = 6;
constexpr int kLanes = 4;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

class BackLines {
public:
    BackLines(const MapScene& scene, const MapLayout& layout, NodeForm form)
        : m_scene(scene), m_layout(layout), m_form(form), m_sizes(sizesOf(form)),
          m_pitch(m_sizes.width + m_sizes.between), m_beforeColumn(m_sizes.between / 3) {
        for (std::vector<Column>& columns : m_columns) {
            columns.resize(at(layout.width / m_pitch + 1));
        }
        for (const MapNode& node : layout.nodes) {
            Column& column = columnsOf(node)[columnAt(node.x)];
            column.lowestTop = std::max(column.lowestTop, node.y);
            column.nodes = std::max(column.nodes, node.y + node.height);
        }
        for (const MapLine& line : layout.lines) {
            for (const MapPoint& point : line.points) {
                Column& column = columnsOf(layout.nodes[at(line.branch)])[columnAt(point.x)];
                int& lowest = point.x % m_pitch == 0 ? column.ahead : column.behind;
                lowest = std::max(lowest, point.y);
            }
        }
    }

    [[nodiscard]] std::vector<MapLine> of(int branch) const {
        std::vector<MapLine> lines;
        for (int from = 0; from < static_cast<int>(m_layout.nodes.size()); ++from) {
            const std::vector<MapAction>& actions = m_scene.branches[at(from)].actions;
            for (int action = 0; action < static_cast<int>(actions.size()); ++action) {
                const int to = actions[at(action)].branch;
                if (to >= 0 && (from == branch || to == branch) && !isDrawn(from, action) &&
                    !isInChain(from, to)) {
                    const int lane = static_cast<int>(lines.size()) % kLanes;
                    lines.push_back({from, action, way(from, action, to, lane)});
                }
            }
        }
        return lines;
    }

private:
    /// How far down what stands in a column reaches: scenes may have thousands of lines back to one
    /// branch.
    struct Column {
        int lowestTop = -1; ///< of its nodes
        int nodes = -1;
        int ahead = -1; ///< lines in front of the nodes
        int behind = -1;
    };

    [[nodiscard]] std::vector<Column>& columnsOf(const MapNode& node) {
        return m_columns[node.isReached ? 1 : 0];
    }
    [[nodiscard]] const std::vector<Column>& columnsOf(const MapNode& node) const {
        return m_columns[node.isReached ? 1 : 0];
    }
    [[nodiscard]] std::size_t columnAt(int x) const { return at(x / m_pitch); }

    [[nodiscard]] bool isDrawn(int branch, int action) const {
        const std::span<const MapLine> lines = linesOf(m_layout, branch);
        const auto found =
            std::partition_point(lines.begin(), lines.end(),
                                 [action](const MapLine& line) { return line.action < action; });
        return found != lines.end() && found->action == action;
    }

    [[nodiscard]] bool isInChain(int from, int to) const {
        const int chain = m_layout.nodes[at(from)].chain;
        return from != to && chain >= 0 && chain == m_layout.nodes[at(to)].chain;
    }

    [[nodiscard]] std::vector<MapPoint> way(int branch, int action, int target, int lane) const {
        const MapNode& from = m_layout.nodes[at(branch)];
        const MapNode& to = m_layout.nodes[at(target)];
        const int exit = from.y + (m_sizes.row > 0 ? exitOf(m_form, action) : from.height * 3 / 4);
        const int turn = from.x - m_beforeColumn - lane * kLaneWidth / 2;
        const int end = to.x + to.width / 2 + lane * kLaneWidth;
        std::vector<MapPoint> points{{from.x, exit}, {turn, exit}};
        if (from.isReached == to.isReached && to.x <= from.x && from.x - to.x <= m_pitch) {
            const int above = to.y - m_sizes.gap / 2 - lane * m_sizes.gap / 8;
            points.insert(points.end(), {{turn, above}, {end, above}, {end, to.y}});
            return points;
        }
        const int below = bottomBetween(to, turn) + kBelow + lane * kLaneWidth;
        points.push_back({turn, below});
        const int bottom = to.y + to.height;
        if (hasOthersBelow(to)) { // round them
            const int beside = to.x - m_beforeColumn - lane * kLaneWidth / 2;
            const int under = bottom + m_sizes.gap / 2 + lane * m_sizes.gap / 8;
            points.insert(points.end(), {{beside, below}, {beside, under}, {end, under}});
        } else {
            points.push_back({end, below});
        }
        points.push_back({end, bottom});
        return points;
    }

    /// Of nodes and lines of the target's part, from its column up to `x`.
    [[nodiscard]] int bottomBetween(const MapNode& to, int x) const {
        const int left = std::min(to.x, x);
        const int right = std::max(to.x + to.width, x);
        const std::vector<Column>& columns = columnsOf(to);
        int bottom = to.y + to.height;
        for (std::size_t i = columnAt(std::max(left, 0)); i < columns.size(); ++i) {
            const int begin = static_cast<int>(i) * m_pitch;
            const int end = begin + m_sizes.width;
            if (begin >= right) {
                break;
            }
            bottom = end > left ? std::max(bottom, columns[i].nodes) : bottom;
            bottom = begin > left ? std::max(bottom, columns[i].ahead) : bottom;
            bottom = end > left && end < right ? std::max(bottom, columns[i].behind) : bottom;
        }
        return bottom;
    }

    [[nodiscard]] bool hasOthersBelow(const MapNode& to) const {
        return columnsOf(to)[columnAt(to.x)].lowestTop > to.y;
    }

    const MapScene& m_scene;
    const MapLayout& m_layout;
    NodeForm m_form;
    FormSizes m_sizes;
    int m_pitch;                                  ///< from column to column
    int m_beforeColumn;                           ///< where the first line goes down
    std::array<std::vector<Column>, 2> m_columns; ///< of what is not reached, and of what is
};

} // namespace

std::vector<MapLine> backLinesOf(const MapScene& scene, const MapLayout& layout, NodeForm form,
                                 int branch) {
    return BackLines(scene, layout, form).of(branch);
}

} // namespace map
