// Finds the first frame number and the frame count from the two ends of a Theora file.
#pragma once

#include <cstdint>

#include "src/Theora/GranuleFormat.h"
#include "src/Theora/PacketReader.h"
#include "src/Theora/SharedSource.h"
#include "src/Theora/StreamHeaders.h"

namespace theora {

/// Sets firstFrame and firstPage; the other fields are set. The number comes from the first page
/// with a position, else it is 0; negative in streams numbered from 0 although their version counts
/// from 1.
void findFirstFrame(SharedSource& source, const GranuleFormat& format, StreamLayout& layout);

/// Frame count according to the last pages of the file; -1 when unknown. Intended: a page without
/// granule position after a counted one adds a frame, whether it completes one or not, since
/// players count that way and the editor's totals must agree.
[[nodiscard]] std::int64_t findFrameCount(SharedSource& source, int serial,
                                          const GranuleFormat& format);

/// The whole layout of a stream by the two above. Numbers that would be negative are shifted in
/// `format`.
[[nodiscard]] StreamLayout scanStream(SharedSource& source, const StreamHeaders& headers,
                                      GranuleFormat& format);

} // namespace theora
