// What the library's results are compared with: the packets of a file and its pictures by libogg
// and libtheora alone, read once from front to end, and the colours as their definition says.
// Shares nothing with the library but the owners of C structures.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <ogg/ogg.h>

#include "tests/support/OggPager.h"

namespace reference {

struct Packet {
    support::Bytes bytes;
    ogg_packet packet{}; ///< points into `bytes`
};

/// All packets of the first stream whose first one begins with `tag`.
[[nodiscard]] std::vector<Packet> packetsOf(const support::Bytes& file, std::string_view tag);

/// hashBytes of the R, G, B bytes of every frame of the first Theora stream, in file order.
[[nodiscard]] std::vector<std::uint64_t> decode(const support::Bytes& file);

/// FNV-1a, 64 bits.
[[nodiscard]] std::uint64_t hashBytes(const std::uint8_t* bytes, std::size_t count);

[[nodiscard]] std::uint8_t red(int y, int v);
[[nodiscard]] std::uint8_t green(int y, int u, int v);
[[nodiscard]] std::uint8_t blue(int y, int u);

} // namespace reference
