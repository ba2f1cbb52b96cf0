// What the library's results are compared with: the pictures of a file by libogg and libtheora
// alone, read once from front to end, and the colours as their definition says. Shares nothing with
// the library but the owners of C structures.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/support/OggPager.h"

namespace reference {

struct Frame {
    std::uint64_t hash; ///< hashBytes of its R, G, B bytes
    bool isKeyframe;
};

/// Every frame of the first Theora stream, in file order.
[[nodiscard]] std::vector<Frame> decode(const support::Bytes& file);

/// FNV-1a, 64 bits.
[[nodiscard]] std::uint64_t hashBytes(const std::uint8_t* bytes, std::size_t count);

[[nodiscard]] std::uint8_t red(int y, int v);
[[nodiscard]] std::uint8_t green(int y, int u, int v);
[[nodiscard]] std::uint8_t blue(int y, int u);

} // namespace reference
