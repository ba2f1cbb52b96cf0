// A clip with a box that moves over plain ground.
#pragma once

#include <cmath>
#include <cstdint>
#include <functional>

#include "platform/Geometry.h"
#include "tests/support/ClipMaker.h"

namespace support {

struct BoxClip {
    int width = 320;
    int height = 192;
    int frames = 40;
    int side = 40;
    std::function<platform::Point(int frame)> place; ///< of the box's upper left corner
    int hiddenFrom = 1 << 30;                        ///< nothing but the ground from here on

    [[nodiscard]] Bytes make() const {
        ClipSpec spec;
        spec.width = width;
        spec.height = height;
        spec.frames = frames;
        spec.luma = [this](int frame, int x, int y) {
            const platform::Point at = place(frame);
            const int u = x - at.x;
            const int v = y - at.y;
            const bool isBox = frame < hiddenFrom && u >= 0 && v >= 0 && u < side && v < side;
            // Squares on the box; the ground has some shading.
            const int value = isBox ? 150 + 25 * ((u / 8 + v / 8) % 3)
                                    : 90 + static_cast<int>(12 * std::sin(x / 23.0 + y / 31.0));
            return static_cast<std::uint8_t>(value);
        };
        return makeClip(spec);
    }
};

} // namespace support
