// A plain sequential decode of an Ogg Theora file with libogg and libtheora alone: what the
// library's seeks are compared with. Shares no code with the library.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/OggPager.h"

namespace reference {

struct Frames {
    int width = 0;
    int height = 0;
    std::vector<std::uint64_t> hashes; ///< FNV-1a of every frame's R, G, B bytes, in file order
};

/// All frames of the first Theora stream.
[[nodiscard]] Frames decode(const support::Bytes& file);
/// Pictures of a file on disk; for clips too large to make here.
[[nodiscard]] support::Bytes readFile(const std::string& path);

/// FNV-1a, 64 bits.
[[nodiscard]] std::uint64_t hashBytes(const std::uint8_t* bytes, std::size_t count);

} // namespace reference
