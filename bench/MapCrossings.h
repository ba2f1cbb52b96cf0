// Random scenes for map_bench, and how many lines cross in their maps: in ours and in those of
// Graphviz's dot.
#pragma once

#include <cstdint>
#include <optional>

#include "map/MapLayout.h"
#include "map/MapScene.h"

namespace bench {

/// A story in stages: most actions lead a little further, some back, some far ahead. Each branch is
/// reached.
[[nodiscard]] map::MapScene storyScene(unsigned seed, int branches, int actions);
/// Any action leads anywhere.
[[nodiscard]] map::MapScene wildScene(unsigned seed, int branches, int actions);

/// Between neighbouring columns; several lines from one node to another count as one.
[[nodiscard]] std::int64_t crossingsOf(const map::MapScene& scene, const map::MapLayout& layout);
/// What dot counts in its own map of the nodes and lines of `layout`; empty without dot.
[[nodiscard]] std::optional<std::int64_t> crossingsOfDot(const map::MapScene& scene,
                                                         const map::MapLayout& layout);

} // namespace bench
