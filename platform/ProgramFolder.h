// Where the running program lies.
#pragma once

#include <string>

namespace platform {

/// The folder of the running program's own file, absolute and UTF-8; empty when unknown. Any
/// thread.
[[nodiscard]] std::string programFolder();

} // namespace platform
