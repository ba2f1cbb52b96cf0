// How points in memory, measured in display pixels, relate to points in files, in video pixels.
#pragma once

#include <optional>

#include "platform/Geometry.h"

namespace zone {

/// Display pixels per video pixel.
struct Scale {
    float x = 1.0F;
    float y = 1.0F;
};

/// For a clip of `video` pixels that is edited in a picture area of `display` pixels. None when a
/// side is not positive: shapes can then be neither read nor written.
[[nodiscard]] constexpr std::optional<Scale> scaleBetween(platform::Size display,
                                                          platform::Size video) {
    if (display.width <= 0 || display.height <= 0 || video.width <= 0 || video.height <= 0) {
        return std::nullopt;
    }
    return Scale{static_cast<float>(display.width) / static_cast<float>(video.width),
                 static_cast<float>(display.height) / static_cast<float>(video.height)};
}

} // namespace zone
