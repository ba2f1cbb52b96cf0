#include "map/BlockSifting.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "map/Links.h"

namespace map {
namespace {

std::size_t at(int number) {
    return static_cast<std::size_t>(number);
}

/// A node, or all slots of one line: the columns that it stands in.
struct Block {
    int first = 0;
    int last = 0;
};

class Sifting {
public:
    Sifting(Columns& columns, std::int64_t limit)
        : m_columns(columns), m_blockOf(columns.vertices(), -1), m_blocks(makeBlocks()),
          m_links(link()), m_limit(limit) {}

    std::int64_t run() {
        while (m_work < m_limit && round()) {
        }
        write();
        return m_work;
    }

private:
    /// Numbers them as well, and brings them into the order of where they are on the average.
    std::vector<Block> makeBlocks() {
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
        std::vector<Block> blocks;
        std::vector<double> middles;
        const auto add = [&](std::span<const int> vertices) {
            double middle = 0;
            for (const int vertex : vertices) {
                m_blockOf[at(vertex)] = static_cast<int>(blocks.size());
                middle += place[at(vertex)] / static_cast<double>(vertices.size());
            }
            blocks.push_back({columnOf[at(vertices.front())], columnOf[at(vertices.back())]});
            middles.push_back(middle);
        };
        for (const std::vector<int>& slots : m_columns.slots) {
            if (!slots.empty() && m_blockOf[at(slots.front())] < 0) {
                add(slots);
            }
        }
        for (int vertex = 0; at(vertex) < m_columns.vertices(); ++vertex) {
            if (m_blockOf[at(vertex)] < 0) {
                add({&vertex, 1});
            }
        }
        m_order.resize(blocks.size());
        std::iota(m_order.begin(), m_order.end(), 0);
        std::stable_sort(m_order.begin(), m_order.end(),
                         [&](int one, int other) { return middles[at(one)] < middles[at(other)]; });
        m_place.resize(blocks.size());
        number(0, m_order.size());
        return blocks;
    }

    [[nodiscard]] BothLinks link() const {
        std::vector<std::pair<int, int>> pairs;
        for (std::size_t vertex = 0; vertex < m_columns.vertices(); ++vertex) {
            for (const int next : m_columns.right[vertex]) {
                if (m_blockOf[vertex] != m_blockOf[at(next)]) {
                    pairs.emplace_back(m_blockOf[vertex], m_blockOf[at(next)]);
                }
            }
        }
        return makeLinks(m_blocks.size(), std::move(pairs));
    }

    /// Places are even; a block on its way is between two of them.
    void number(std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            m_place[at(m_order[i])] = 2 * static_cast<int>(i);
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

    /// What passing below the next one costs; they have a column in common.
    std::int64_t costOfSwap(int one, int next) {
        const Block& upper = m_blocks[at(one)];
        const Block& lower = m_blocks[at(next)];
        // Where one of them goes on beyond the other's end, its link there leads to itself.
        using Ends = std::span<const int>;
        const Ends self(&one, 1);
        const Ends other(&next, 1);
        return gain(upper.first >= lower.first ? m_links.left.of(one) : self,
                    lower.first >= upper.first ? m_links.left.of(next) : other) +
               gain(upper.last <= lower.last ? m_links.right.of(one) : self,
                    lower.last <= upper.last ? m_links.right.of(next) : other);
    }

    /// Moves one block to its best place among all others.
    bool sift(int block) {
        const Block own = m_blocks[at(block)];
        const auto begin = at(m_place[at(block)] / 2);
        m_place[at(block)] = -1;
        std::int64_t cost = 0; // against the place at the top
        std::int64_t costAtBegin = 0;
        std::int64_t least = 0;
        std::size_t best = 0;
        for (std::size_t i = 0; i < m_order.size(); ++i) {
            const int next = m_order[i];
            if (i == begin) {
                costAtBegin = cost;
                best = cost == least ? i : best;
                continue;
            }
            const Block& other = m_blocks[at(next)];
            if (own.last >= other.first && other.last >= own.first) {
                cost += costOfSwap(block, next);
            }
            m_place[at(block)] = 2 * static_cast<int>(i) + 1;
            if (cost < least) {
                least = cost;
                best = i < begin ? i + 1 : i;
            }
        }
        m_work += static_cast<std::int64_t>(m_order.size());
        moveTo(begin, best);
        return least < costAtBegin;
    }

    void moveTo(std::size_t from, std::size_t to) {
        const auto place = [this](std::size_t i) {
            return m_order.begin() + static_cast<std::ptrdiff_t>(i);
        };
        if (to < from) {
            std::rotate(place(to), place(from), place(from + 1));
        } else {
            std::rotate(place(from), place(from + 1), place(to + 1));
        }
        number(std::min(from, to), std::max(from, to) + 1);
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
    std::vector<int> m_order;   ///< of all blocks, from top to bottom
    std::vector<int> m_place;   ///< by block
    std::vector<int> m_blockOf; ///< by vertex
    std::vector<Block> m_blocks;
    BothLinks m_links; ///< of blocks
    std::int64_t m_work = 0;
    std::int64_t m_limit;
};

} // namespace

std::int64_t siftBlocks(Columns& columns, std::int64_t limit) {
    return Sifting(columns, limit).run();
}

} // namespace map
