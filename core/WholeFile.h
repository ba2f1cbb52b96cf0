// Files that are read or replaced as a whole, in memory. Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"

namespace core {

/// The bytes of the file at `path`. Empty if it cannot be opened or read completely, or if it is
/// larger than `maxBytes`, so that no file can exhaust the memory.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::string& path,
                                                       std::size_t maxBytes);

/// Replaces the file at `path` by these bytes in one step, for files whose loss costs nothing: they
/// are not brought to the disk, and a failure leaves the old one. A link at `path` is replaced.
void replaceWholeFile(platform::FileSystem& files, const std::string& path, std::string_view bytes);

} // namespace core
