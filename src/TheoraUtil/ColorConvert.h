// Pictures to pixels, in all output modes, bit for bit after fixed tables (ITU-R BT.601, video
// range).
#pragma once

#include <cstdint>

#include "src/TheoraOutputMode.h"
#include "src/TheoraPicture.h"

namespace theora {

/// How to convert; the results are the same bytes.
enum class ColorPath {
    fastest, ///< the best that this processor has
    portable
};

/// Converts the top left width x height pixels into `out`: rows of width * bytesPerPixel(mode)
/// bytes, packed, top row first; unused bytes of a pixel become 255. Modes with alpha also read the
/// `width` luma samples right of those; without them all is opaque. Pixels that the picture lacks
/// are left alone; TH_UNDEFINED does nothing. Any thread.
void convertPicture(const TheoraPicture& picture, TheoraOutputMode mode, std::uint8_t* out,
                    int width, int height, ColorPath path = ColorPath::fastest);

} // namespace theora
