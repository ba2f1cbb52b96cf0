// Writes a line to stderr for a person at a terminal or for a pipeline, without logging it.
#pragma once

#include <string_view>

namespace core {

/// Never fails and never throws. Any thread.
void writeStandardError(std::string_view line) noexcept;

} // namespace core
