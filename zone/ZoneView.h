// What a shape has to know of the window it is edited in. The zone editor installs it while it is
// open; without one there is no scale between display and video pixels, so shapes cannot be read or
// written. Main thread only.
#pragma once

#include <optional>

#include "platform/FontSet.h"
#include "platform/Geometry.h"

namespace zone {

struct ZoneView {
    /// The picture area of the editor in display pixels: what points in memory are measured in.
    /// Not the area points are clamped to, which is the manager's.
    platform::Size displaySize;
    /// The clip's frame size in video pixels: what points in files are measured in.
    platform::Size videoSize;
    /// Font of the point numbers.
    platform::FontHandle font = 0;
    /// Measures the numbers; not owned, must outlive the view. With none a number takes 16 x 16.
    const platform::FontSet* fonts = nullptr;
};

void setZoneView(const ZoneView& view);
void clearZoneView();
/// Null when no editor is open. Valid until the next change.
[[nodiscard]] const ZoneView* zoneView();

/// Display pixels per video pixel.
struct Scale {
    float x = 1.0F;
    float y = 1.0F;
};
/// None when no editor is open or one of its sizes is not positive.
[[nodiscard]] std::optional<Scale> currentScale();

} // namespace zone
