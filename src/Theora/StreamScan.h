// Finds the first frame number and the frame count from the two ends of a Theora file.
#pragma once

#include "src/Theora/GranuleFormat.h"
#include "src/Theora/PacketReader.h"
#include "src/Theora/SharedSource.h"
#include "src/Theora/StreamHeaders.h"

namespace theora {

/// The first number comes from the first page with a position, else it is 0. In streams numbered
/// from 0 although their version counts from 1 it would be negative: `format` is shifted then. The
/// count comes from the last pages; -1 when unknown.
[[nodiscard]] StreamLayout scanStream(SharedSource& source, const StreamHeaders& headers,
                                      GranuleFormat& format);

} // namespace theora
