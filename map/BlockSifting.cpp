#include "map/BlockSifting.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace map {
namespace {

std::size_t at(int number) {
    return static_cast<std::size_t>(number);
}

/// A node, or all slots of one line.
struct Block {
    int first = 0;           ///< column
    int last = 0;            ///< column
    double middle = 0;       ///< where its vertices are, on the average
    std::vector<int> left{}; ///< blocks at the other ends of its links
    std::vector<int> right{};
};

class Sifting {
public:
    Sifting(Columns& columns, std::int64_t limit)
        : m_columns(columns), m_blockOf(columns.vertices(), -1), m_limit(limit) {
        makeBlocks();
        link();
    }

    std::int64_t run() {
        while (m_work < m_limit && round()) {
        }
        write();
        return m_work;
    }

private:
    void makeBlocks() {
        std::vector<int> columnOf(m_columns.vertices());
        std::vector<double> place(m_columns.vertices());
        for (std::size_t column = 0; column < m_columns.order.size(); ++column) {
            const std::vector<int>& order = m_columns.order[column];
            for (std::size_t i = 0; i < order.size(); ++i) {
                columnOf[at(order[i])] = static_cast<int>(column);
                place[at(order[i])] =
                    (static_cast<double>(i) + 0.5) - static_cast<double>(order.size()) / 2;
            }
        }
        const auto add = [&](const std::vector<int>& vertices) {
            Block block{columnOf[at(vertices.front())], columnOf[at(vertices.back())]};
            for (const int vertex : vertices) {
                m_blockOf[at(vertex)] = static_cast<int>(m_blocks.size());
                block.middle += place[at(vertex)] / static_cast<double>(vertices.size());
            }
            m_blocks.push_back(std::move(block));
        };
        for (const std::vector<int>& slots : m_columns.slots) {
            if (!slots.empty() && m_blockOf[at(slots.front())] < 0) {
                add(slots);
            }
        }
        for (std::size_t vertex = 0; vertex < m_columns.vertices(); ++vertex) {
            if (m_blockOf[vertex] < 0) {
                add({static_cast<int>(vertex)});
            }
        }
        for (std::size_t block = 0; block < m_blocks.size(); ++block) {
            m_order.push_back(static_cast<int>(block));
        }
        std::stable_sort(m_order.begin(), m_order.end(), [this](int one, int other) {
            return m_blocks[at(one)].middle < m_blocks[at(other)].middle;
        });
        m_place.resize(m_blocks.size());
        for (std::size_t i = 0; i < m_order.size(); ++i) {
            m_place[at(m_order[i])] = static_cast<int>(i);
        }
    }

    void link() {
        for (std::size_t vertex = 0; vertex < m_columns.vertices(); ++vertex) {
            const int from = m_blockOf[vertex];
            for (const int next : m_columns.right[vertex]) {
                const int to = m_blockOf[at(next)];
                if (from != to) {
                    m_blocks[at(from)].right.push_back(to);
                    m_blocks[at(to)].left.push_back(from);
                }
            }
        }
    }

    /// How many more pairs are out of order with `one` below `other` than above.
    std::int64_t gain(std::span<const int> one, std::span<const int> other) {
        std::int64_t sum = 0;
        for (const int end : one) {
            const int place = m_place[at(end)];
            for (const int otherEnd : other) {
                const int otherPlace = m_place[at(otherEnd)];
                sum += (place < otherPlace ? 1 : 0) - (place > otherPlace ? 1 : 0);
            }
        }
        m_work += static_cast<std::int64_t>(one.size() * other.size());
        return sum;
    }

    /// What passing below the next one costs.
    std::int64_t costOfSwap(int one, int next) {
        const Block& upper = m_blocks[at(one)];
        const Block& lower = m_blocks[at(next)];
        ++m_work;
        if (upper.last < lower.first || lower.last < upper.first) {
            return 0;
        }
        // Where one of them goes on beyond the other's end, its link there leads to itself.
        using Ends = std::span<const int>;
        const Ends self(&one, 1);
        const Ends other(&next, 1);
        const bool bothBegin = upper.first == lower.first;
        const bool bothEnd = upper.last == lower.last;
        return gain(bothBegin || upper.first > lower.first ? Ends(upper.left) : self,
                    bothBegin || lower.first > upper.first ? Ends(lower.left) : other) +
               gain(bothEnd || upper.last < lower.last ? Ends(upper.right) : self,
                    bothEnd || lower.last < upper.last ? Ends(lower.right) : other);
    }

    void swapBehind(std::size_t place) {
        std::swap(m_order[place], m_order[place + 1]);
        m_place[at(m_order[place])] = static_cast<int>(place);
        m_place[at(m_order[place + 1])] = static_cast<int>(place) + 1;
    }

    /// Moves one block past all others and to the best place that it met.
    bool sift(int block) {
        const auto begin = at(m_place[at(block)]);
        for (std::size_t place = begin; place > 0; --place) {
            m_trail += costOfSwap(m_order[place - 1], block);
            swapBehind(place - 1);
        }
        std::int64_t least = m_trail; // at the top
        std::size_t best = 0;
        for (std::size_t place = 0; place + 1 < m_order.size(); ++place) {
            m_trail += costOfSwap(block, m_order[place + 1]);
            swapBehind(place);
            const bool isNearer = m_trail == least && place + 1 == begin;
            if (m_trail < least || isNearer) {
                least = m_trail;
                best = place + 1;
            }
        }
        for (std::size_t place = m_order.size() - 1; place > best; --place) {
            swapBehind(place - 1);
        }
        m_trail = 0;
        return least < 0;
    }

    bool round() {
        bool any = false;
        for (std::size_t block = 0; block < m_blocks.size() && m_work < m_limit; ++block) {
            any = sift(static_cast<int>(block)) || any;
        }
        return any;
    }

    void write() {
        for (std::vector<int>& order : m_columns.order) {
            std::sort(order.begin(), order.end(), [this](int one, int other) {
                return m_place[at(m_blockOf[at(one)])] < m_place[at(m_blockOf[at(other)])];
            });
        }
    }

    Columns& m_columns;
    std::vector<int> m_blockOf; ///< by vertex
    std::vector<Block> m_blocks;
    std::vector<int> m_order; ///< of all blocks, from top to bottom
    std::vector<int> m_place; ///< by block
    std::int64_t m_trail = 0; ///< how many more crossings than where the block came from
    std::int64_t m_work = 0;
    std::int64_t m_limit;
};

} // namespace

std::int64_t siftBlocks(Columns& columns, std::int64_t limit) {
    return Sifting(columns, limit).run();
}

} // namespace map
