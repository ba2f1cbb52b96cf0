#include "map/Placement.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace map {
namespace {

constexpr int kPasses = 10;

std::size_t at(int vertex) {
    return static_cast<std::size_t>(vertex);
}

class Placement {
public:
    Placement(const Columns& columns, std::span<const int> heights, int gap, int slotHeight)
        : m_columns(columns), m_nodes(heights.size()), m_gap(gap), m_tops(columns.vertices()),
          m_heights(heights.begin(), heights.end()) {
        m_heights.resize(columns.vertices(), slotHeight);
    }

    std::vector<int> run() {
        for (const std::vector<int>& order : m_columns.order) {
            int end = 0;
            for (std::size_t i = 0; i < order.size(); ++i) {
                m_tops[at(order[i])] = end;
                end += m_heights[at(order[i])] + gapBehind(order, i);
            }
            for (const int vertex : order) {
                m_tops[at(vertex)] -= end / 2;
            }
        }
        const std::size_t count = m_columns.order.size();
        for (int pass = 0; pass < kPasses; ++pass) {
            for (std::size_t i = 0; i < count; ++i) {
                place(m_columns.order[pass % 2 == 0 ? i : count - 1 - i], pass);
            }
        }
        const auto least = std::min_element(m_tops.begin(), m_tops.end());
        const int shift = least != m_tops.end() ? *least : 0;
        for (int& top : m_tops) {
            top -= shift;
        }
        return m_tops;
    }

private:
    struct Group { ///< vertices that touch
        double sum;
        double weight;
        std::size_t count;

        [[nodiscard]] double mean() const { return sum / weight; }
    };

    [[nodiscard]] bool isSlot(int vertex) const { return at(vertex) >= m_nodes; }

    /// Slots hold their distances in themselves.
    [[nodiscard]] int gapBehind(const std::vector<int>& order, std::size_t i) const {
        if (i + 1 >= order.size()) {
            return 0;
        }
        const int slots = (isSlot(order[i]) ? 1 : 0) + (isSlot(order[i + 1]) ? 1 : 0);
        return slots == 0 ? m_gap : slots == 1 ? m_gap / 3 : 0;
    }

    [[nodiscard]] int middle(int vertex) const {
        return m_tops[at(vertex)] + m_heights[at(vertex)] / 2;
    }

    /// Where a vertex would like its top, and how much. Between slots, a line is to be straight.
    [[nodiscard]] Group wish(int vertex, int pass) const {
        Group wish{0, 0, 1};
        const auto add = [&](const std::vector<int>& side) {
            for (const int other : side) {
                const int slots = (isSlot(vertex) ? 1 : 0) + (isSlot(other) ? 1 : 0);
                const double weight = slots == 2 ? 8 : slots == 1 ? 2 : 1;
                wish.sum += weight * (middle(other) - m_heights[at(vertex)] / 2);
                wish.weight += weight;
            }
        };
        const bool isLast = pass >= kPasses - 2;
        if (isLast || pass % 2 == 0) {
            add(m_columns.left[at(vertex)]);
        }
        if (isLast || pass % 2 != 0) {
            add(m_columns.right[at(vertex)]);
        }
        if (wish.weight == 0) {
            wish = {m_tops[at(vertex)] * 0.1, 0.1, 1};
        }
        return wish;
    }

    /// As near to the wishes as the order allows: the least sum of squares.
    void place(const std::vector<int>& order, int pass) {
        std::vector<Group> groups;
        std::vector<int> offsets;
        int offset = 0;
        for (std::size_t i = 0; i < order.size(); ++i) {
            offsets.push_back(offset);
            Group group = wish(order[i], pass);
            group.sum -= group.weight * offset;
            while (!groups.empty() && groups.back().mean() > group.mean()) {
                group.sum += groups.back().sum;
                group.weight += groups.back().weight;
                group.count += groups.back().count;
                groups.pop_back();
            }
            groups.push_back(group);
            offset += m_heights[at(order[i])] + gapBehind(order, i);
        }
        std::size_t next = 0;
        for (const Group& group : groups) {
            const int begin = static_cast<int>(std::floor(group.mean()));
            for (std::size_t i = 0; i < group.count; ++i, ++next) {
                m_tops[at(order[next])] = begin + offsets[next];
            }
        }
    }

    const Columns& m_columns;
    std::size_t m_nodes;
    int m_gap;
    std::vector<int> m_tops;
    std::vector<int> m_heights;
};

} // namespace

std::vector<int> placeVertices(const Columns& columns, std::span<const int> heights, int gap,
                               int slotHeight) {
    return Placement(columns, heights, gap, slotHeight).run();
}

} // namespace map
