// What is known of a file without opening it: for lists of many files.
#pragma once

#include <optional>
#include <string>

#include "platform/FileSystem.h"

namespace platform {

/// As FileSystem::info(), but where the file's identity would need more time it is 0. Any thread.
[[nodiscard]] std::optional<FileInfo> quickInfo(FileSystem& files, const std::string& path);

} // namespace platform
