// Which column of a map each branch stands in. Used by the layout.
#pragma once

#include <span>
#include <vector>

namespace map {

struct Arc {
    int from;
    int to;

    friend bool operator==(const Arc&, const Arc&) = default;
};

struct Ranks {
    std::vector<bool> isReached; ///< by node: from the first one
    std::vector<bool> isForward; ///< by arc: to a later column, from nodes of the same kind
    std::vector<int> column;     ///< by node, from 0 on; unreached ones have columns of their own
};

/// Arcs that lead back to where a search came from, in the order of the arcs, count for nothing;
/// nor do those between what is reached and what is not. The others lead to the right, and are as
/// short as a node's own move can make them. `first`: -1 for none. Arcs hold numbers of nodes.
[[nodiscard]] Ranks rankNodes(int nodes, std::span<const Arc> arcs, int first);

} // namespace map
