// Lines for a developer who watches the program run; no user sees them.
#pragma once

#include <string_view>

namespace platform {

/// One line, to the debugger on Windows and to stderr elsewhere. text: UTF-8. Any thread.
void writeDebugLine(std::string_view text) noexcept;

} // namespace platform
