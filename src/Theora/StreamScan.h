// What a Theora file is at its two ends: the number of its first frame and the count of its frames.
#pragma once

#include <cstdint>

#include "src/Theora/PacketReader.h"

namespace theora {

/// Sets firstFrame and firstPage, the others being known. The number comes from the first page that
/// says one, and is 0 when none does; negative in streams that were numbered from 0 although their
/// version counts from 1.
void findFirstFrame(SharedSource& source, const GranuleFormat& format, StreamLayout& layout);

/// Frames of the stream as the pages at the file's end say; -1 when none of them does. A page
/// without a granule position behind a counted one adds a frame, whether it completes one or not:
/// players count so, and the editor's totals must agree with theirs.
[[nodiscard]] std::int64_t findFrameCount(SharedSource& source, int serial,
                                          const GranuleFormat& format);

} // namespace theora
