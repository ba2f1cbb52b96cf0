// Checks the Huffman tables of a JPEG before the decoder reads them.
#pragma once

#include <cstdint>
#include <span>

namespace toolkit {

/// Whether every table of the JPEG stream `bytes` has at most 256 codes and ends where its segment
/// does (ITU-T T.81, B.1.1 and B.2.4.2). The image library trusts the counts and writes past its
/// tables otherwise. True for anything that does not begin like a JPEG. Any thread.
[[nodiscard]] bool jpegTablesAreSound(std::span<const std::uint8_t> bytes);

} // namespace toolkit
