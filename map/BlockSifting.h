// Fewer crossings by moving whole lines: all slots of a line keep together, so that a line does not
// wind through others on its way. Used by the ordering.
#pragma once

#include <cstdint>

#include "map/Ordering.h"

namespace map {

/// Begins with the order in the columns; may leave more crossings than there were. `limit`: of the
/// work; returns what was done of it.
std::int64_t siftBlocks(Columns& columns, std::int64_t limit);

} // namespace map
