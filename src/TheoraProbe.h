// Tells clips from other files by their headers alone, for lists of videos that are not open yet.
#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace theora {

/// True when the file at `path` (UTF-8) has the headers of a clip that a manager would load. Stops
/// reading where headers cannot be any more; decodes nothing. Never throws. Any thread.
[[nodiscard]] bool hasTheoraHeaders(const std::string& path, platform::FileSystem& files);

} // namespace theora
