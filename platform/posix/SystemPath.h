// The form of a path that system calls take. Used by the POSIX back end's sources only.
#pragma once

#include <algorithm>
#include <string>

namespace platform {

/// Scene folders are named "Scenes/A\" throughout the program; here a "\" would be a character of a
/// name. An empty path means the current folder.
[[nodiscard]] inline std::string systemPath(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

[[nodiscard]] inline std::string systemFolder(const std::string& folder) {
    return folder.empty() ? std::string(".") : systemPath(folder);
}

} // namespace platform
