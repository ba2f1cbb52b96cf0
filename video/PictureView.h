// Where the picture lies in its window: between window pixels and the display pixels that points
// are measured in. Painting and hit tests go through the same view. By default a display pixel is a
// window pixel.
#pragma once

#include "platform/Geometry.h"

namespace video {

struct PictureView {
    /// The window pixel at the top left of display pixel (0, 0).
    platform::Point offset;
    /// Window pixels per display pixel; above 0.
    double scale = 1.0;

    /// The middle of a display pixel. Results far outside any window are cut to some 100 million
    /// pixels, so that there is room to draw around them.
    [[nodiscard]] platform::Point toWindow(platform::Point display) const;
    /// The display pixel that a window pixel shows a part of.
    [[nodiscard]] platform::Point toDisplay(platform::Point window) const;
    /// The window pixels of a rectangle of display pixels, partly covered ones included.
    [[nodiscard]] platform::Rect toWindow(const platform::Rect& display) const;
};

} // namespace video
