#include "map/ColumnSifting.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace map {
namespace {

constexpr std::size_t kSmallColumn = 64;

/// How many more pairs of ends are out of order with `above` above `below` than with it below.
/// Most lists hold one end or two.
int outOfOrder(std::span<const int> above, std::span<const int> below) {
    int sum = 0;
    if (above.size() * below.size() <= 16) {
        for (const int end : above) {
            for (const int other : below) {
                sum += (end > other ? 1 : 0) - (end < other ? 1 : 0);
            }
        }
        return sum;
    }
    std::size_t less = 0;
    std::size_t notMore = 0;
    for (const int end : above) {
        while (less < below.size() && below[less] < end) {
            ++less;
        }
        notMore = std::max(notMore, less);
        while (notMore < below.size() && below[notMore] == end) {
            ++notMore;
        }
        sum += static_cast<int>(less + notMore) - static_cast<int>(below.size());
    }
    return sum;
}

} // namespace

std::int64_t ColumnSifting::takeWork() {
    return std::exchange(m_work, 0);
}

std::span<const int> ColumnSifting::sortedPlaces(std::span<const int> neighbours) {
    const std::size_t begin = m_sorted.size();
    for (const int vertex : neighbours) {
        m_sorted.push_back(m_places[static_cast<std::size_t>(vertex)]);
    }
    const std::span<int> added = std::span(m_sorted).subspan(begin);
    std::sort(added.begin(), added.end());
    return added;
}

void ColumnSifting::collectEnds(std::span<const int> order) {
    std::size_t count = 0;
    for (const int vertex : order) {
        count += m_links.left.of(vertex).size() + m_links.right.of(vertex).size();
    }
    m_sorted.clear();
    m_sorted.reserve(count); // the lists stay where they are
    m_ends.clear();
    for (const int vertex : order) {
        const std::span<const int> left = sortedPlaces(m_links.left.of(vertex));
        m_ends.push_back({left, sortedPlaces(m_links.right.of(vertex))});
    }
    m_work += static_cast<std::int64_t>(count + order.size());
}

/// A pair only has to be looked at once, as nothing moves in the columns beside this one.
void ColumnSifting::compareAll(std::size_t count) {
    m_costs.assign(count * count, 0);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            const int cost = outOfOrder(m_ends[i].left, m_ends[j].left) +
                             outOfOrder(m_ends[i].right, m_ends[j].right);
            m_costs[i * count + j] = cost;
            m_costs[j * count + i] = -cost;
        }
    }
    m_work += static_cast<std::int64_t>(count * count);
}

int ColumnSifting::costAbove(int one, int other) const {
    const auto i = static_cast<std::size_t>(one);
    const auto j = static_cast<std::size_t>(other);
    const std::size_t count = m_ends.size();
    return count <= kSmallColumn ? m_costs[i * count + j]
                                 : outOfOrder(m_ends[i].left, m_ends[j].left) +
                                       outOfOrder(m_ends[i].right, m_ends[j].right);
}

std::size_t ColumnSifting::bestPlace(std::size_t from, std::size_t reach) const {
    std::size_t best = from;
    int least = 0;
    int cost = 0;
    for (std::size_t i = from; i > 0 && from - (i - 1) <= reach; --i) {
        cost += costAbove(m_now[from], m_now[i - 1]);
        if (cost < least) {
            least = cost;
            best = i - 1;
        }
    }
    cost = 0;
    for (std::size_t i = from + 1; i < m_now.size() && i - from <= reach; ++i) {
        cost -= costAbove(m_now[from], m_now[i]);
        if (cost < least) {
            least = cost;
            best = i;
        }
    }
    return best;
}

bool ColumnSifting::sift(std::size_t column, std::vector<int>& order) {
    if (m_isSettled[column]) {
        return false;
    }
    m_isSettled[column] = true;
    collectEnds(order);
    const bool isSmall = order.size() <= kSmallColumn;
    if (isSmall) {
        compareAll(order.size());
    }
    const std::size_t reach = isSmall ? order.size() : 1;
    m_now.resize(order.size());
    std::iota(m_now.begin(), m_now.end(), 0);
    bool any = false;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const std::size_t to = bestPlace(i, reach);
        if (to != i) {
            const auto place = [this](std::size_t at) {
                return m_now.begin() + static_cast<std::ptrdiff_t>(at);
            };
            to < i ? std::rotate(place(to), place(i), place(i + 1))
                   : std::rotate(place(i), place(i + 1), place(to + 1));
            any = true;
        }
    }
    if (!any) {
        return false;
    }
    const std::vector<int> before = order;
    std::transform(m_now.begin(), m_now.end(), order.begin(),
                   [&](int at) { return before[static_cast<std::size_t>(at)]; });
    const std::size_t end = std::min(column + 2, m_isSettled.size());
    for (std::size_t near = column > 0 ? column - 1 : 0; near < end; ++near) {
        m_isSettled[near] = false;
    }
    return true;
}

} // namespace map
