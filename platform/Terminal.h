// Output for a user who started the program from a command line.
#pragma once

#include <string_view>

namespace platform {

/// Prints whole lines to standard output. On a system where a program with windows has none, to the
/// console that it was started from. False when there is neither, or the text cannot be written.
/// text: ASCII. Any thread.
[[nodiscard]] bool printToTerminal(std::string_view text) noexcept;

} // namespace platform
