// Something drawn over the picture of a video. The control draws its layers in the order they were
// added, whenever a part of the picture is painted.
#pragma once

#include "platform/Canvas.h"
#include "platform/Geometry.h"
#include "video/PictureView.h"

namespace video {

/// UI thread only.
class Layer {
public:
    virtual ~Layer() = default;
    /// `frame` is the number of the current frame: 0 without a video, -1 for one without frames.
    /// The canvas is clipped to what needs painting.
    virtual void paint(platform::Canvas& canvas, const PictureView& view, int frame) = 0;
    /// The window pixels that paint() may draw on; empty when it draws nothing.
    [[nodiscard]] virtual platform::Rect area(const PictureView& view, int frame) const = 0;
};

} // namespace video
