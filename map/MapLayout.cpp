#include "map/MapLayout.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <span>
#include <tuple>
#include <utility>

#include "map/Chains.h"
#include "map/Ordering.h"
#include "map/Placement.h"
#include "map/Ranks.h"

namespace map {
namespace {

constexpr int kSlotHeight = 18;
constexpr int kSpread = 13;
constexpr int kStub = 34; ///< below a node with an action that leads nowhere
constexpr int kHeading = 28;
constexpr int kFoot = 5;
constexpr int kCountHeight = 17; ///< of how many more a chain has

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

int heightOf(const MapBranch& branch, NodeForm form) {
    const FormSizes sizes = sizesOf(form);
    const int actions = static_cast<int>(branch.actions.size());
    const int rows = form == NodeForm::unfolded ? actions : std::min(actions, kMostRows + 1);
    return sizes.height + (sizes.row > 0 ? rows * sizes.row + kFoot : 0);
}

bool hasStub(const MapBranch& branch) {
    return std::any_of(branch.actions.begin(), branch.actions.end(),
                       [](const MapAction& action) { return action.isBroken(); });
}

/// The nodes of one part of the map, the reached ones or the others.
class Part {
public:
    /// `nodeHeights`: by branch.
    Part(const MapScene& scene, NodeForm form, const std::vector<int>& nodeHeights,
         MapLayout& layout)
        : m_scene(scene), m_form(form), m_sizes(sizesOf(form)), m_nodeHeights(nodeHeights),
          m_layout(layout), m_number(scene.branches.size(), -1) {}

    void lay(const Ranks& ranks, const std::vector<MapLine>& actions, std::span<const Arc> arcs,
             bool isReached, int top) {
        std::vector<int> column;
        std::vector<int> heights;
        for (std::size_t branch = 0; branch < m_scene.branches.size(); ++branch) {
            if (ranks.isReached[branch] == isReached) {
                m_number[branch] = static_cast<int>(m_branches.size());
                m_branches.push_back(static_cast<int>(branch));
                column.push_back(ranks.column[branch]);
                const bool needsStub = m_sizes.row > 0 && hasStub(m_scene.branches[branch]);
                heights.push_back(m_nodeHeights[branch] + (needsStub ? kStub : 0));
            }
        }
        std::vector<Arc> drawn;
        for (std::size_t i = 0; i < arcs.size(); ++i) {
            if (ranks.isForward[i] && m_number[at(arcs[i].from)] >= 0) {
                drawn.push_back({m_number[at(arcs[i].from)], m_number[at(arcs[i].to)]});
                m_lines.push_back(actions[i]);
            }
        }
        Columns columns = makeColumns(column, drawn);
        reduceCrossings(columns);
        const std::vector<int> tops = placeVertices(columns, heights, m_sizes.gap, kSlotHeight);
        for (std::size_t node = 0; node < m_branches.size(); ++node) {
            const int branch = m_branches[node];
            m_layout.nodes[at(branch)] = {xOf(column[node]), top + tops[node], m_sizes.width,
                                          m_nodeHeights[at(branch)], isReached};
            m_layout.width = std::max(m_layout.width, xOf(column[node]) + m_sizes.width);
            m_layout.height = std::max(m_layout.height, top + tops[node] + heights[node]);
        }
        addLines(columns, drawn, column, tops, top);
    }

private:
    [[nodiscard]] int xOf(int column) const { return column * (m_sizes.width + m_sizes.between); }

    void addLines(const Columns& columns, const std::vector<Arc>& drawn,
                  const std::vector<int>& column, const std::vector<int>& tops, int top) {
        for (std::size_t i = 0; i < drawn.size(); ++i) {
            MapLine& line = m_lines[i];
            const MapNode& from = m_layout.nodes[at(line.branch)];
            line.points = {{from.x + from.width, from.y + exitOf(m_form, line.action)}};
            int passed = column[at(drawn[i].from)];
            for (const int slot : columns.slots[i]) {
                const int y = top + tops[at(slot)] + kSlotHeight / 2;
                const int x = xOf(++passed);
                line.points.push_back({x, y});
                line.points.push_back({x + m_sizes.width, y});
                m_layout.height = std::max(m_layout.height, y + kSlotHeight / 2);
            }
        }
        spreadEnds(drawn);
        if (m_sizes.row == 0) {
            spreadBegins();
        }
        std::move(m_lines.begin(), m_lines.end(), std::back_inserter(m_layout.lines));
    }

    /// Lines arrive in the order in which they come, one below the other.
    void spreadEnds(const std::vector<Arc>& drawn) {
        const auto target = [&](std::size_t i) { return m_branches[at(drawn[i].to)]; };
        const auto comesFrom = [this](std::size_t i) { return m_lines[i].points.back().y; };
        spread(target, comesFrom, [this](std::size_t i, const MapNode& node, int by) {
            m_lines[i].points.push_back({node.x, node.y + m_sizes.entry + by});
        });
    }

    /// They leave in the order in which they go on.
    void spreadBegins() {
        const auto source = [this](std::size_t i) { return m_lines[i].branch; };
        const auto goesTo = [this](std::size_t i) { return m_lines[i].points[1].y; };
        spread(source, goesTo, [this](std::size_t i, const MapNode& /*node*/, int by) {
            m_lines[i].points.front().y += by;
        });
    }

    /// Sorts the lines of each node by `height` and tells how far each is off the node's entry.
    template <typename NodeOf, typename Height, typename Place>
    void spread(const NodeOf& nodeOf, const Height& height, const Place& place) {
        std::vector<std::size_t> order(m_lines.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        const auto key = [&](std::size_t i) { return std::tuple(nodeOf(i), height(i), i); };
        std::sort(order.begin(), order.end(),
                  [&](std::size_t one, std::size_t other) { return key(one) < key(other); });
        for (std::size_t begin = 0; begin < order.size();) {
            const int number = nodeOf(order[begin]);
            std::size_t end = begin;
            while (end < order.size() && nodeOf(order[end]) == number) {
                ++end;
            }
            const int count = static_cast<int>(end - begin);
            const MapNode& node = m_layout.nodes[at(number)];
            const int room = 2 * std::min(m_sizes.entry, node.height - m_sizes.entry) - 8;
            const int all = std::min(kSpread * (count - 1), std::max(room, 0));
            for (int i = 0; begin < end; ++begin, ++i) {
                place(order[begin], node, count > 1 ? all * i / (count - 1) - all / 2 : 0);
            }
        }
    }

    const MapScene& m_scene;
    NodeForm m_form;
    FormSizes m_sizes;
    const std::vector<int>& m_nodeHeights;
    MapLayout& m_layout;
    std::vector<int> m_number;   ///< by branch; -1: not in this part
    std::vector<int> m_branches; ///< by number
    std::vector<MapLine> m_lines;
};

std::vector<int> heightsOf(const MapScene& scene, NodeForm form) {
    std::vector<int> heights;
    for (const MapBranch& branch : scene.branches) {
        heights.push_back(heightOf(branch, form));
    }
    return heights;
}

MapLayout layOutAll(const MapScene& scene, NodeForm form, const std::vector<int>& heights) {
    std::vector<Arc> arcs;
    std::vector<MapLine> actions; // by arc
    for (std::size_t branch = 0; branch < scene.branches.size(); ++branch) {
        const std::vector<MapAction>& content = scene.branches[branch].actions;
        for (std::size_t action = 0; action < content.size(); ++action) {
            if (content[action].branch >= 0) {
                arcs.push_back({static_cast<int>(branch), content[action].branch});
                actions.push_back({static_cast<int>(branch), static_cast<int>(action), {}});
            }
        }
    }
    const Ranks ranks = rankNodes(static_cast<int>(scene.branches.size()), arcs, scene.first);
    MapLayout layout;
    layout.nodes.resize(scene.branches.size());
    Part(scene, form, heights, layout).lay(ranks, actions, arcs, true, 0);
    if (std::find(ranks.isReached.begin(), ranks.isReached.end(), false) != ranks.isReached.end()) {
        layout.unreachedTop = layout.height + (layout.height > 0 ? sizesOf(form).gap : 0);
        Part(scene, form, heights, layout)
            .lay(ranks, actions, arcs, false, layout.unreachedTop + kHeading);
    }
    return layout;
}

/// All branches of a chain have the place of its one node.
MapLayout layOutFolded(const MapScene& scene, NodeForm form, std::vector<std::vector<int>> chains) {
    const FoldedScene folded = fold(scene, chains);
    std::vector<int> heights = heightsOf(folded.scene, form);
    for (const std::vector<int>& chain : chains) {
        heights[at(folded.numbers[at(chain.front())])] += kCountHeight;
    }
    MapLayout layout = layOutAll(folded.scene, form, heights);
    const std::vector<MapNode> nodes = std::exchange(layout.nodes, {});
    for (const int number : folded.numbers) {
        layout.nodes.push_back(nodes[at(number)]);
    }
    for (std::size_t chain = 0; chain < chains.size(); ++chain) {
        for (const int branch : chains[chain]) {
            layout.nodes[at(branch)].chain = static_cast<int>(chain);
        }
    }
    for (MapLine& line : layout.lines) {
        line.branch = folded.last[at(line.branch)];
    }
    layout.chains = std::move(chains);
    return layout;
}

} // namespace

FormSizes sizesOf(NodeForm form) {
    switch (form) {
    case NodeForm::unfolded:
    case NodeForm::whole:
        return {136, kStillHeight + kNameHeight, 17, 24, 40, 37};
    case NodeForm::still:
        return {92, 74, 0, 22, 22, 37};
    default:
        return {72, kNameHeight, 0, 16, 40, kNameHeight / 2};
    }
}

int exitOf(NodeForm form, int action) {
    const FormSizes sizes = sizesOf(form);
    const int row = form == NodeForm::unfolded ? action : std::min(action, kMostRows);
    return sizes.row > 0 ? sizes.height + sizes.row * row + sizes.row / 2 : sizes.entry;
}

std::span<const MapLine> linesOf(const MapLayout& layout, int branch) {
    const auto first =
        std::partition_point(layout.lines.begin(), layout.lines.end(),
                             [branch](const MapLine& line) { return line.branch < branch; });
    const auto last = std::partition_point(
        first, layout.lines.end(), [branch](const MapLine& line) { return line.branch == branch; });
    return {first, last};
}

MapLayout layOut(const MapScene& scene, NodeForm form) {
    std::vector<std::vector<int>> chains;
    if (form == NodeForm::name) {
        chains = findChains(scene);
    }
    MapLayout layout = chains.empty() ? layOutAll(scene, form, heightsOf(scene, form))
                                      : layOutFolded(scene, form, std::move(chains));
    std::sort(layout.lines.begin(), layout.lines.end(),
              [](const MapLine& one, const MapLine& other) {
                  return std::tie(one.branch, one.action) < std::tie(other.branch, other.action);
              });
    return layout;
}

} // namespace map
