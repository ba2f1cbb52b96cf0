// Paths for the system's calls: wide, with "\" between the parts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

#include "platform/win32/WideText.h"

namespace platform::win32 {

/// Empty for a path that would lead to another file: with a zero byte in it, or with a colon that
/// ends no drive's letter and so names a hidden stream of the file before it.
[[nodiscard]] inline std::wstring widePath(const std::string& path) {
    constexpr std::size_t kBehindDrive = 2;
    std::wstring result = wide(path);
    if (result.find(L'\0') != std::wstring::npos ||
        result.find(L':', kBehindDrive) != std::wstring::npos || result.starts_with(L':')) {
        return {};
    }
    std::replace(result.begin(), result.end(), L'/', L'\\');
    return result;
}

/// Without a final separator, unless that is all there is to a root.
[[nodiscard]] inline std::wstring withoutFinalSeparator(std::wstring path) {
    const bool root = path.size() == 3 && path[1] == L':';
    if (path.size() > 1 && path.back() == L'\\' && !root) {
        path.pop_back();
    }
    return path;
}

} // namespace platform::win32
