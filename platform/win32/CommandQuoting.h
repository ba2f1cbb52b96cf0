// One command line from a list of arguments, so that programs which split it by the usual rules
// (https://learn.microsoft.com/cpp/c-language/parsing-c-command-line-arguments) get each argument
// unchanged.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform::win32 {

inline void appendArgument(std::wstring& line, std::wstring_view argument) {
    if (!line.empty()) {
        line += L' ';
    }
    if (!argument.empty() && argument.find_first_of(L" \t\n\v\"") == std::wstring_view::npos) {
        line += argument;
        return;
    }
    line += L'"';
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        if (unit == L'"') {
            line.append(backslashes + 1, L'\\'); // doubled, and one for the quotation mark
        }
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        line += unit;
    }
    line.append(backslashes, L'\\');
    line += L'"';
}

} // namespace platform::win32
