// What a Theora file is at its two ends: the number of its first frame and the count of its frames.
#pragma once

#include <cstdint>

#include "src/Theora/PacketReader.h"

namespace theora {

/// Number of the first frame, from the first page that says one. Negative in streams that were
/// numbered from 0 although their version counts from 1. 0 when no page says.
[[nodiscard]] std::int64_t findFirstFrame(SharedSource& source, int serial, std::int64_t dataStart,
                                          const GranuleFormat& format);

/// Frames of the stream as the pages at the file's end say; -1 when none of them does. A page
/// without a granule position behind a counted one adds a frame, whether it completes one or not:
/// players count so, and the editor's totals must agree with theirs.
[[nodiscard]] std::int64_t findFrameCount(SharedSource& source, int serial,
                                          const GranuleFormat& format);

} // namespace theora
