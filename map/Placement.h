// How high what stands in the columns of a map is placed. Used by the layout.
#pragma once

#include <span>
#include <vector>

#include "map/Ordering.h"

namespace map {

/// The top of each vertex, so that lines are as straight as the order in the columns allows; the
/// highest is 0. `heights`: of the nodes; all others are slots. `gap`: between nodes.
[[nodiscard]] std::vector<int> placeVertices(const Columns& columns, std::span<const int> heights,
                                             int gap, int slotHeight);

} // namespace map
