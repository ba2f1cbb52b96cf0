// Where the program's own name ends in a command line.
#pragma once

#include <string_view>

namespace platform::win32 {

/// `line` without its first word, which may stand in quotation marks, and the blanks behind it.
/// Source: https://learn.microsoft.com/cpp/c-language/parsing-c-command-line-arguments
[[nodiscard]] inline std::wstring_view withoutProgramName(std::wstring_view line) {
    bool quoted = false;
    while (!line.empty() && (quoted || (line.front() != L' ' && line.front() != L'\t'))) {
        quoted = quoted != (line.front() == L'"');
        line.remove_prefix(1);
    }
    while (!line.empty() && (line.front() == L' ' || line.front() == L'\t')) {
        line.remove_prefix(1);
    }
    return line;
}

} // namespace platform::win32
