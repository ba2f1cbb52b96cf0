// Measures the colour conversion alone, compared with libyuv's if installed.
#pragma once

#include "src/TheoraUtil/ColorConvert.h"

namespace bench {

/// Of the luma plane.
struct FrameSize {
    int width = 0;
    int height = 0;
};

/// Median milliseconds of converting one 4:2:0 frame of noise to RGB.
[[nodiscard]] double conversionTime(FrameSize size, theora::ColorPath path);
/// Prints its row of the table.
void reportConversion(FrameSize size);

} // namespace bench
