#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>
#include <tuple>
#include <vector>

#include "map/Ordering.h"
#include "map/Ranks.h"

namespace map {
namespace {

constexpr std::int64_t kMostSlots = 150'000;

/// Arcs that are longer get no slots.
int longestWithSlots(std::span<const int> column, std::span<const Arc> arcs) {
    std::vector<int> lengths;
    lengths.reserve(arcs.size());
    for (const Arc& arc : arcs) {
        lengths.push_back(column[static_cast<std::size_t>(arc.to)] -
                          column[static_cast<std::size_t>(arc.from)]);
    }
    std::sort(lengths.begin(), lengths.end());
    std::int64_t slots = 0;
    int longest = 0;
    for (const int length : lengths) {
        slots += length - 1;
        if (slots > kMostSlots) {
            break;
        }
        longest = length;
    }
    return longest;
}

/// Breadth first along the links, so that trees begin without crossings.
void orderAtFirst(Columns& columns, std::span<const int> column) {
    std::vector<bool> isSeen(columns.vertices());
    std::vector<int> queue;
    for (std::size_t start = 0; start < columns.vertices(); ++start) {
        if (isSeen[start]) {
            continue;
        }
        isSeen[start] = true;
        queue.assign(1, static_cast<int>(start));
        for (std::size_t i = 0; i < queue.size(); ++i) {
            const auto vertex = static_cast<std::size_t>(queue[i]);
            columns.order[static_cast<std::size_t>(column[vertex])].push_back(queue[i]);
            for (const auto* side : {&columns.right[vertex], &columns.left[vertex]}) {
                for (const int next : *side) {
                    if (!isSeen[static_cast<std::size_t>(next)]) {
                        isSeen[static_cast<std::size_t>(next)] = true;
                        queue.push_back(next);
                    }
                }
            }
        }
    }
}

} // namespace

Columns makeColumns(std::span<const int> column, std::span<const Arc> arcs) {
    Columns columns;
    std::vector<int> places(column.begin(), column.end());
    columns.left.resize(column.size());
    columns.right.resize(column.size());
    columns.slots.resize(arcs.size());
    std::vector<std::size_t> byEnds(arcs.size());
    std::iota(byEnds.begin(), byEnds.end(), std::size_t{0});
    std::stable_sort(byEnds.begin(), byEnds.end(), [&](std::size_t one, std::size_t other) {
        return std::tie(arcs[one].from, arcs[one].to) < std::tie(arcs[other].from, arcs[other].to);
    });
    const int longest = longestWithSlots(column, arcs);
    for (std::size_t i = 0; i < byEnds.size(); ++i) {
        const Arc& arc = arcs[byEnds[i]];
        if (i > 0 && arcs[byEnds[i - 1]] == arc) {
            columns.slots[byEnds[i]] = columns.slots[byEnds[i - 1]];
            continue;
        }
        const int from = column[static_cast<std::size_t>(arc.from)];
        const int to = column[static_cast<std::size_t>(arc.to)];
        if (to - from > longest) {
            continue;
        }
        int before = arc.from;
        for (int at = from + 1; at <= to; ++at) {
            int next = arc.to;
            if (at < to) {
                next = static_cast<int>(places.size());
                places.push_back(at);
                columns.left.emplace_back();
                columns.right.emplace_back();
                columns.slots[byEnds[i]].push_back(next);
            }
            columns.right[static_cast<std::size_t>(before)].push_back(next);
            columns.left[static_cast<std::size_t>(next)].push_back(before);
            before = next;
        }
    }
    const auto last = std::max_element(places.begin(), places.end());
    columns.order.resize(last == places.end() ? 0 : static_cast<std::size_t>(*last) + 1);
    orderAtFirst(columns, places);
    return columns;
}

} // namespace map
