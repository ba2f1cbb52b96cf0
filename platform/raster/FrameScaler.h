// The one scaler of video pictures: nearest source pixel by pixel centres, as GDI's StretchBlt
// picks them in its COLORONCOLOR mode, so pictures are the same on every system.
#pragma once

#include <cstdint>

#include "platform/FrameBuffer.h"
#include "platform/raster/PixelView.h"

namespace platform::raster {

/// The source column that target column `index` shows, for 0 <= index < targetCount: the one at the
/// target pixel's middle, the left one of two; in a reduction the last one whose own middle lies in
/// the target pixel. So GDI chooses in its mode COLORONCOLOR (measured under Wine, but for a target
/// of one column), and a picture is the same by both.
constexpr int nearestIndex(int index, int sourceCount, int targetCount) {
    const std::int64_t source = sourceCount;
    const std::int64_t target = targetCount;
    const std::int64_t reached = targetCount < sourceCount
                                     ? 2 * (std::int64_t{index} + 1) * source - target
                                     : (2 * std::int64_t{index} + 1) * source - 1;
    return static_cast<int>(reached / (2 * target));
}

/// The same for the rows of a picture that lies bottom row first: in a reduction GDI shows the
/// first one whose middle lies in the target pixel.
constexpr int nearestRow(int index, int sourceCount, int targetCount) {
    if (targetCount >= sourceCount) {
        return nearestIndex(index, sourceCount, targetCount);
    }
    const std::int64_t target = targetCount;
    return static_cast<int>((2 * std::int64_t{index} * sourceCount + target) / (2 * target));
}

/// Stretches the whole of `frame` onto `target` of `pixels` and draws what lies in `clip`, which
/// lies inside them. Pixels become opaque. Draws nothing for an empty frame or target.
void scaleFrame(const FrameBuffer& frame, PixelView pixels, const Rect& target, const Rect& clip);

} // namespace platform::raster
