// Chains of branches without a choice, which small maps show as one node.
#pragma once

#include <vector>

#include "map/MapScene.h"

namespace map {

/// Each branch of a chain leads to the next one alone, and nothing else leads there. In their
/// order; only chains that are long enough to be worth it.
[[nodiscard]] std::vector<std::vector<int>> findChains(const MapScene& scene);

/// A scene in which each chain is one branch.
struct FoldedScene {
    MapScene scene;
    std::vector<int> numbers; ///< by branch of the whole scene: where it is
    std::vector<int> last;    ///< by branch of this one: the last in its chain, or the only one
};
[[nodiscard]] FoldedScene fold(const MapScene& scene, const std::vector<std::vector<int>>& chains);

} // namespace map
