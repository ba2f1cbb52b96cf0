// Converts pictures to pixels in all output modes, bit-exact to fixed tables (ITU-R BT.601, video
// range).
#pragma once

#include <cstdint>

#include "src/TheoraOutputMode.h"
#include "src/TheoraPicture.h"

namespace theora {

/// Implementation; all give the same bytes.
enum class ColorPath {
    fastest, ///< the best for this processor
    portable
};

/// Converts the top left width x height pixels into `out`: rows of width * bytesPerPixel(mode)
/// bytes, packed, top row first; unused bytes of a pixel become 255. Modes with alpha also read the
/// next `width` luma samples of each row; without these everything is opaque. Pixels outside the
/// picture are left unchanged; TH_UNDEFINED does nothing. Any thread.
void convertPicture(const TheoraPicture& picture, TheoraOutputMode mode, std::uint8_t* out,
                    int width, int height, ColorPath path = ColorPath::fastest);

} // namespace theora
