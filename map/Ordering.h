// The order of what stands in the columns of a map, from top to bottom, with few crossings of
// lines. Used by the layout.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "map/Ranks.h"

namespace map {

/// Nodes, and slots for the lines that pass a column. Vertices are numbered, nodes first; links
/// join neighbouring columns only.
struct Columns {
    std::vector<std::vector<int>> order; ///< by column: vertices from top to bottom
    std::vector<std::vector<int>> left;  ///< by vertex: its neighbours in the column before
    std::vector<std::vector<int>> right; ///< by vertex: those in the column behind
    std::vector<std::vector<int>> slots; ///< by arc: vertices that it passes, from left to right

    [[nodiscard]] std::size_t vertices() const { return left.size(); }
};

/// `column`: by node. Arcs from the same node to the same one share their slots. Where there are
/// too many lines that pass, the longest get no slots.
[[nodiscard]] Columns makeColumns(std::span<const int> column, std::span<const Arc> arcs);

/// Changes the order within the columns. The same columns always get the same order; large ones are
/// given less care, so that it takes no longer.
void reduceCrossings(Columns& columns);

} // namespace map
