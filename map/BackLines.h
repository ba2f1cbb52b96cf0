// The lines that lead back, which a map shows for one branch only.
#pragma once

#include <vector>

#include "map/MapLayout.h"
#include "map/MapScene.h"

namespace map {

/// Those from the branch and to it, as the corners of their ways: from the left edge of the
/// action's row, in front of the column, through a lane above the target if that is in the same
/// column or the one before, else below all that is between them, to the middle of the target's
/// upper or lower edge. Lines that come one after the other keep apart.
[[nodiscard]] std::vector<MapLine> backLinesOf(const MapScene& scene, const MapLayout& layout,
                                               NodeForm form, int branch);

} // namespace map
