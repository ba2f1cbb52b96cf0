// The layouts of a map that a view of it may need.
#pragma once

#include <functional>
#include <map>

#include "map/MapLayout.h"
#include "map/MapScene.h"

namespace ui {

/// A layout of the scene, by form; made once for each scene.
using MapLayouts = std::map<map::NodeForm, map::MapLayout>;

/// Of every form that a view shows; some are missing when `isCancelled`. Any thread.
[[nodiscard]] MapLayouts layOutAll(const map::MapScene& scene,
                                   const std::function<bool()>& isCancelled);

} // namespace ui
