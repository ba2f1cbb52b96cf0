// A file's bytes in memory, for the readers that parse from there. UI thread only.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace core {

/// The bytes of the file at `path`, unchanged. Empty when it cannot be opened or read completely,
/// or is larger than `maxBytes`: no file may claim the machine's memory.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::string& path,
                                                       std::size_t maxBytes);

} // namespace core
