// A decoded picture: three planes of 8-bit samples owned by the decoder or the plane cache.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace theora {

struct TheoraPlane {
    const std::uint8_t* data = nullptr; ///< top row; not owned
    std::ptrdiff_t rowBytes = 0;        ///< distance between rows; negative in bottom-up memory
    int width = 0;
    int height = 0;
};

/// Y, U (Cb), V (Cr). The chroma sample of pixel (x, y) is at (x >> chromaShiftX, y >>
/// chromaShiftY) of its plane: both shifts are 1 for 4:2:0, (1, 0) for 4:2:2, 0 for 4:4:4.
struct TheoraPicture {
    std::array<TheoraPlane, 3> planes;
    int chromaShiftX = 1;
    int chromaShiftY = 1;
    /// Pictures of one clip with the same identity have the same samples; 0 = unknown.
    std::uint64_t identity = 0;
};

} // namespace theora
