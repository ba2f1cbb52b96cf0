// A clip with a box that moves over plain ground.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

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
    int hiddenTo = 1 << 30;                          ///< up to here

    [[nodiscard]] Bytes make() const {
        ClipSpec spec;
        spec.width = width;
        spec.height = height;
        spec.frames = frames;
        std::vector<std::uint8_t> ground; // with some shading
        for (int i = 0; i < width * height; ++i) {
            const int x = i % width;
            const int y = i / width;
            ground.push_back(static_cast<std::uint8_t>(
                90 + static_cast<int>(12 * std::sin(x / 23.0 + y / 31.0))));
        }
        platform::Point at; // of the box, on a frame whose first pixel comes first
        spec.luma = [&](int frame, int x, int y) {
            at = x == 0 && y == 0 ? place(frame) : at;
            const int u = x - at.x;
            const int v = y - at.y;
            const bool isShown = frame < hiddenFrom || frame >= hiddenTo;
            const bool isBox = isShown && u >= 0 && v >= 0 && u < side && v < side;
            return isBox ? static_cast<std::uint8_t>(150 + 25 * ((u / 8 + v / 8) % 3))
                         : ground[static_cast<std::size_t>(y * width + x)];
        };
        return makeClip(spec);
    }
};

} // namespace support
