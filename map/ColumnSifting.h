// Fewer crossings by moving what stands in one column past the rest of it. Used by the ordering.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "map/Links.h"

namespace map {

/// Keeps track of the columns in which nothing can be gained at present, so that they cost nothing.
class ColumnSifting {
public:
    /// Both outlive the object; `places`: of the vertices in their columns, renewed by the owner
    /// when a column changes.
    ColumnSifting(std::size_t columns, const BothLinks& links, const std::vector<int>& places)
        : m_links(links), m_places(places), m_isSettled(columns) {}

    /// All columns have changed.
    void restart() { m_isSettled.assign(m_isSettled.size(), false); }
    /// Moves every vertex of a column to its best place among the others; in a large column, only
    /// past its neighbours. True if `order`, that column, changed.
    bool sift(std::size_t column, std::vector<int>& order);

    /// Links and pairs of vertices looked at since the last call.
    [[nodiscard]] std::int64_t takeWork();

private:
    struct Ends { ///< places in the neighbouring columns, from top to bottom
        std::span<const int> left;
        std::span<const int> right;
    };

    void collectEnds(std::span<const int> order);
    std::span<const int> sortedPlaces(std::span<const int> neighbours);
    void compareAll(std::size_t count);
    [[nodiscard]] int costAbove(int one, int other) const;
    [[nodiscard]] std::size_t bestPlace(std::size_t from, std::size_t reach) const;

    const BothLinks& m_links;
    const std::vector<int>& m_places;
    std::vector<bool> m_isSettled; ///< by column
    std::int64_t m_work = 0;

    // Of the column that is sifted, by where a vertex stood at first:
    std::vector<Ends> m_ends;
    std::vector<int> m_costs; ///< of standing above each other one; of a small column
    std::vector<int> m_sorted;
    std::vector<int> m_now; ///< who stands where meanwhile
};

} // namespace map
