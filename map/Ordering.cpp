#include "map/Ordering.h"

#include <algorithm>

#include "map/BlockSifting.h"

namespace map {
namespace {

using Order = std::vector<std::vector<int>>;

/// What all starts together may cost: links and vertices looked at.
constexpr std::int64_t kMostWork = 40'000'000;
constexpr std::int64_t kMostWorkOfSmall = 2'500'000;
constexpr std::int64_t kWorkOfVertex = 1'250;
constexpr int kMostStarts = 8;
constexpr std::int64_t kShareOfSweeps = 6;
constexpr int kMostIdleSweeps = 2;

std::size_t at(int vertex) {
    return static_cast<std::size_t>(vertex);
}

/// Counts pairs that are out of order.
class Inversions {
public:
    explicit Inversions(std::size_t places) : m_tree(places + 1, 0) {}

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
        : m_columns(columns), m_place(columns.vertices()), m_key(columns.vertices()) {
        for (const std::vector<int>& column : columns.order) {
            number(column);
        }
    }

    [[nodiscard]] std::int64_t count() const {
        std::int64_t sum = 0;
        for (std::size_t column = 0; column + 1 < m_columns.order.size(); ++column) {
            sum += countBehind(column);
        }
        return sum;
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
    void number(const std::vector<int>& column) {
        for (std::size_t i = 0; i < column.size(); ++i) {
            m_place[at(column[i])] = static_cast<int>(i);
        }
        m_work += static_cast<std::int64_t>(column.size());
    }

    [[nodiscard]] std::int64_t countBehind(std::size_t column) const {
        Inversions inversions(m_columns.order[column + 1].size());
        std::int64_t sum = 0;
        for (const int vertex : m_columns.order[column]) {
            for (const int place : placesOf(m_columns.right[at(vertex)])) {
                sum += inversions.add(place);
            }
        }
        return sum;
    }

    [[nodiscard]] std::vector<int> placesOf(const std::vector<int>& neighbours) const {
        std::vector<int> places;
        places.reserve(neighbours.size());
        for (const int vertex : neighbours) {
            places.push_back(m_place[at(vertex)]);
        }
        std::sort(places.begin(), places.end());
        m_work += static_cast<std::int64_t>(places.size()) + 1;
        return places;
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
            for (bool better = true; better && m_work < limit;) {
                better = false;
                for (std::size_t column = 0; column < count && m_work < limit; ++column) {
                    better = sift(column) || better;
                }
            }
            idle = keepBest() ? 0 : idle + 1;
        }
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
            const auto& side = (isForward ? m_columns.left : m_columns.right)[at(vertex)];
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

    struct Ends {
        std::vector<int> left;
        std::vector<int> right;
    };

    /// Crossings of links from a vertex with those from one below it.
    std::int64_t crossings(const std::vector<int>& above, const std::vector<int>& below) {
        std::int64_t sum = 0;
        std::size_t passed = 0;
        for (const int end : above) {
            while (passed < below.size() && below[passed] < end) {
                ++passed;
            }
            sum += static_cast<std::int64_t>(passed);
        }
        m_work += static_cast<std::int64_t>(above.size() + below.size());
        return sum;
    }

    /// How many more crossings there are with `one` above `other` than with it below.
    std::int64_t costAbove(const Ends& one, const Ends& other) {
        return crossings(one.left, other.left) + crossings(one.right, other.right) -
               crossings(other.left, one.left) - crossings(other.right, one.right);
    }

    /// Moves every vertex of a column to its best place among the others; in a large column, only
    /// past its neighbours.
    bool sift(std::size_t column) {
        std::vector<int>& order = m_columns.order[column];
        std::vector<Ends> ends;
        ends.reserve(order.size());
        for (const int vertex : order) {
            ends.push_back(
                {placesOf(m_columns.left[at(vertex)]), placesOf(m_columns.right[at(vertex)])});
        }
        const std::size_t reach = order.size() <= 64 ? order.size() : 1;
        bool any = false;
        for (std::size_t i = 0; i < order.size(); ++i) {
            const std::size_t to = bestPlace(ends, i, reach);
            const auto move = [&](auto& list) {
                const auto begin = list.begin();
                const auto from = begin + static_cast<std::ptrdiff_t>(i);
                const auto target = begin + static_cast<std::ptrdiff_t>(to);
                to < i ? std::rotate(target, from, from + 1)
                       : std::rotate(from, from + 1, target + 1);
            };
            if (to != i) {
                move(order);
                move(ends);
                any = true;
            }
        }
        number(order);
        return any;
    }

    std::size_t bestPlace(const std::vector<Ends>& ends, std::size_t from, std::size_t reach) {
        std::size_t best = from;
        std::int64_t least = 0;
        std::int64_t cost = 0;
        for (std::size_t i = from; i > 0 && from - (i - 1) <= reach; --i) {
            cost += costAbove(ends[from], ends[i - 1]);
            if (cost < least) {
                least = cost;
                best = i - 1;
            }
        }
        cost = 0;
        for (std::size_t i = from + 1; i < ends.size() && i - from <= reach; ++i) {
            cost -= costAbove(ends[from], ends[i]);
            if (cost < least) {
                least = cost;
                best = i;
            }
        }
        return best;
    }

    Columns& m_columns;
    std::vector<int> m_place; ///< by vertex: in its column
    std::vector<double> m_key;
    Order m_best;
    std::int64_t m_least = 0;
    mutable std::int64_t m_work = 0;
};

} // namespace

std::int64_t countCrossings(const Columns& columns) {
    Columns copy = columns;
    return Reduction(copy).count();
}

void reduceCrossings(Columns& columns) {
    Reduction(columns).run();
}

} // namespace map
