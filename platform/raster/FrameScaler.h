// The one scaler of video pictures: nearest source pixel by pixel centres, as GDI's StretchBlt
// picks them in its COLORONCOLOR mode, so pictures are the same on every system.
#pragma once

#include <cstdint>

#include "platform/FrameBuffer.h"
#include "platform/raster/PixelView.h"

namespace platform::raster {

/// The source index that target index `index` shows: ((2 * index + 1) * sourceCount) /
/// (2 * targetCount), for 0 <= index < targetCount.
constexpr int nearestIndex(int index, int sourceCount, int targetCount) {
    return static_cast<int>((2 * static_cast<std::int64_t>(index) + 1) * sourceCount /
                            (2 * static_cast<std::int64_t>(targetCount)));
}

/// Stretches the whole of `frame` onto `target` of `pixels` and draws what lies in `clip`, which
/// lies inside them. Pixels become opaque. Draws nothing for an empty frame or target.
void scaleFrame(const FrameBuffer& frame, PixelView pixels, const Rect& target, const Rect& clip);

} // namespace platform::raster
