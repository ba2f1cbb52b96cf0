// Reads a whole file into memory, for parsers. UI thread only.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace core {

/// The bytes of the file at `path`. Empty if it cannot be opened or read completely, or if it is
/// larger than `maxBytes`, so that no file can exhaust the memory.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::string& path,
                                                       std::size_t maxBytes);

} // namespace core
