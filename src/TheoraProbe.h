// Whether a file is a clip, going by its headers alone. Used where a file is offered as a video
// that nobody has asked to see yet.
#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace theora {

/// True when the file at `path` (UTF-8) has the headers of a clip that a manager would load. Reads
/// no further than headers may lie, decodes no picture. Never throws. Any thread.
[[nodiscard]] bool hasTheoraHeaders(const std::string& path, platform::FileSystem& files);

} // namespace theora
