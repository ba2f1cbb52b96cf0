// One line to stderr, for a person at a terminal or a pipeline: beside the log, never in it.
#pragma once

#include <string>

namespace core {

/// Never fails and never throws. Any thread.
void tellStandardError(const std::string& line) noexcept;

} // namespace core
