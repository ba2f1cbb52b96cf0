// Distinguishes clips from other files by their headers alone, for lists of videos that are not
// open yet.
#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace theora {

struct Probe {
    bool isPlayable = false;
    bool isTheora = false; ///< false only if the file was read and holds no Theora stream
    std::string reason{};  ///< why it is not playable; names no file
};

/// Whether the file at `path` (UTF-8) has the headers of a clip that a manager would load. Stops
/// reading where headers cannot be any more; decodes nothing. Never throws. Any thread.
[[nodiscard]] Probe probeClip(const std::string& path, platform::FileSystem& files);

} // namespace theora
