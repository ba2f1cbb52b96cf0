// What the program was started with.
#pragma once

#include <string>

namespace platform {

/// The command line without the program's own name, UTF-8. A system that passes it as one text
/// returns it as typed, with quotation marks; elsewhere `arguments`, the `count` ones of
/// main, are joined with one blank. Any thread.
[[nodiscard]] std::string commandLine(int count, const char* const* arguments);

} // namespace platform
