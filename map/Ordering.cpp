#include "map/Ordering.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "map/BlockSifting.h"
#include "map/ColumnSifting.h"
#include "map/Links.h"

namespace map {
namespace {

using Order = std::vector<std::vector<int>>;

/// What all starts together may cost: links and vertices looked at.
constexpr std::int64_t kMostWork = 40'000'000;
constexpr std::int64_t kMostWorkOfSmall = 2'000'000;
constexpr std::int64_t kWorkOfVertex = 1'250;
constexpr int kMostStarts = 6;
constexpr std::int64_t kShareOfSweeps = 6;
constexpr int kMostIdleSweeps = 2;

std::size_t at(int vertex) {
    return static_cast<std::size_t>(vertex);
}

/// Counts pairs that are out of order.
class Inversions {
public:
    void restart(std::size_t places) {
        m_tree.assign(places + 1, 0);
        m_count = 0;
    }

    std::int64_t add(int place) {
        std::int64_t notAbove = 0;
        for (int i = place + 1; i > 0; i &= i - 1) {
            notAbove += m_tree[at(i)];
        }
        for (std::size_t i = at(place) + 1; i < m_tree.size(); i += i & (~i + 1)) {
            ++m_tree[i];
        }
        return m_count++ - notAbove;
    }

private:
    std::vector<int> m_tree;
    std::int64_t m_count = 0;
};

class Reduction {
public:
    explicit Reduction(Columns& columns)
        : m_columns(columns), m_links(linksOf(columns)), m_place(columns.vertices()),
          m_key(columns.vertices()), m_sifting(columns.order.size(), m_links, m_place) {
        for (const std::vector<int>& column : columns.order) {
            number(column);
        }
    }

    void run() {
        const Order begin = m_columns.order;
        m_best = begin;
        m_least = count();
        const std::int64_t limit =
            std::clamp(kWorkOfVertex * static_cast<std::int64_t>(m_columns.vertices()),
                       kMostWorkOfSmall, kMostWork);
        for (int start = 0; start < kMostStarts && m_least > 0 && m_work < limit; ++start) {
            m_columns.order = begin;
            for (std::vector<int>& column : m_columns.order) {
                if (start % 2 == 1) {
                    std::reverse(column.begin(), column.end());
                }
                number(column);
            }
            sweep(start, std::min(limit, m_work + limit / kShareOfSweeps));
            moveLines(limit);
        }
        m_columns.order = m_best;
    }

private:
    static BothLinks linksOf(const Columns& columns) {
        std::vector<std::pair<int, int>> pairs;
        for (std::size_t vertex = 0; vertex < columns.vertices(); ++vertex) {
            for (const int next : columns.right[vertex]) {
                pairs.emplace_back(static_cast<int>(vertex), next);
            }
        }
        return makeLinks(columns.vertices(), std::move(pairs));
    }

    void number(const std::vector<int>& column) {
        for (std::size_t i = 0; i < column.size(); ++i) {
            m_place[at(column[i])] = static_cast<int>(i);
        }
        m_work += static_cast<std::int64_t>(column.size());
    }

    std::int64_t count() {
        std::int64_t sum = 0;
        for (std::size_t column = 0; column + 1 < m_columns.order.size(); ++column) {
            sum += countBehind(column);
        }
        return sum;
    }

    std::int64_t countBehind(std::size_t column) {
        m_inversions.restart(m_columns.order[column + 1].size());
        std::int64_t sum = 0;
        for (const int vertex : m_columns.order[column]) {
            m_ends.clear();
            for (const int neighbour : m_links.right.of(vertex)) {
                m_ends.push_back(m_place[at(neighbour)]);
            }
            std::sort(m_ends.begin(), m_ends.end());
            for (const int place : m_ends) {
                sum += m_inversions.add(place);
            }
            m_work += static_cast<std::int64_t>(m_ends.size()) + 1;
        }
        return sum;
    }

    void sweep(int start, std::int64_t limit) {
        int idle = 0;
        for (int round = 0; idle < kMostIdleSweeps && m_least > 0 && m_work < limit; ++round) {
            const bool isForward = (round + start / 2) % 2 == 0;
            const bool turns = round % 4 >= 2;
            const std::size_t count = m_columns.order.size();
            for (std::size_t i = 1; i < count; ++i) {
                sortColumn(isForward ? i : count - 1 - i, isForward, turns);
            }
            m_sifting.restart();
            for (bool better = true; better && m_work < limit;) {
                better = false;
                for (std::size_t column = 0; column < count && m_work < limit; ++column) {
                    better = sift(column) || better;
                }
            }
            idle = keepBest() ? 0 : idle + 1;
        }
    }

    bool sift(std::size_t column) {
        const bool hasChanged = m_sifting.sift(column, m_columns.order[column]);
        m_work += m_sifting.takeWork();
        if (hasChanged) {
            number(m_columns.order[column]);
        }
        return hasChanged;
    }

    void moveLines(std::int64_t limit) {
        m_work += siftBlocks(m_columns, std::max<std::int64_t>(limit - m_work, 0));
        for (const std::vector<int>& column : m_columns.order) {
            number(column);
        }
        keepBest();
    }

    bool keepBest() {
        const std::int64_t now = count();
        if (now >= m_least) {
            return false;
        }
        m_least = now;
        m_best = m_columns.order;
        return true;
    }

    /// By the mean of the neighbours on one side. `turns`: equal ones change places, which leads
    /// out of a rut.
    void sortColumn(std::size_t column, bool isForward, bool turns) {
        std::vector<int>& order = m_columns.order[column];
        for (const int vertex : order) {
            const auto side = (isForward ? m_links.left : m_links.right).of(vertex);
            double sum = 0;
            for (const int neighbour : side) {
                sum += m_place[at(neighbour)];
            }
            m_key[at(vertex)] =
                side.empty() ? m_place[at(vertex)] : sum / static_cast<double>(side.size());
            m_work += static_cast<std::int64_t>(side.size());
        }
        if (turns) {
            std::reverse(order.begin(), order.end());
        }
        std::stable_sort(order.begin(), order.end(),
                         [this](int one, int other) { return m_key[at(one)] < m_key[at(other)]; });
        number(order);
    }

    Columns& m_columns;
    BothLinks m_links;
    std::vector<int> m_place; ///< by vertex: in its column
    std::vector<double> m_key;
    ColumnSifting m_sifting;
    Inversions m_inversions;
    std::vector<int> m_ends;
    Order m_best;
    std::int64_t m_least = 0;
    std::int64_t m_work = 0;
};

} // namespace

void reduceCrossings(Columns& columns) {
    Reduction(columns).run();
}

} // namespace map
