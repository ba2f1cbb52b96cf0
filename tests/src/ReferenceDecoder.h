// Expected results: a file's pictures decoded sequentially by libogg and libtheora alone, and
// colours by their definition. Shares no code with the library except the guards of C structures.
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
