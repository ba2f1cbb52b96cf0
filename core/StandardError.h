// One line to stderr, for a person at a terminal or a pipeline: beside the log, never in it.
#pragma once

#include <string_view>

namespace core {

/// Never fails and never throws. Any thread.
void tellStandardError(std::string_view line) noexcept;

} // namespace core
