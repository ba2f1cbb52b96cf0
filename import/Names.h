// Names of imported videos: valid on every system, in a scene's file, and free.
#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace imports {

/// What imported videos are called behind their name.
inline constexpr const char* kExtension = ".ogv";

/// The name, without extension, that a video gets for the file at `source`. Never empty; with the
/// extension at most 100 bytes.
[[nodiscard]] std::string baseNameFor(const std::string& source);

/// Whether neither a video nor zones of that name are in the folder, in any letter case. False
/// when the folder cannot be read. `folder` ends in a separator.
[[nodiscard]] bool isFree(platform::FileSystem& files, const std::string& folder,
                          const std::string& baseName);
/// `baseName` itself if it is free, else with " 2", " 3", ... behind it. Empty if none is free.
[[nodiscard]] std::string freeName(platform::FileSystem& files, const std::string& folder,
                                   const std::string& baseName);

} // namespace imports
