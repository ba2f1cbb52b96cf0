// The shape that the author copied last. It is kept while the program runs, so that it can be
// pasted into another video. UI thread only.
#pragma once

#include <optional>

#include "zone/ShapeEdits.h"

namespace zoneedit {

[[nodiscard]] std::optional<zone::Points>& copiedShape();

} // namespace zoneedit
