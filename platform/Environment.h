// What the system tells every program about its surroundings.
#pragma once

#include <string>
#include <vector>

namespace platform {

/// The folders in which programs are found by name, UTF-8, as the system lists them: possibly
/// relative, missing or empty. Any thread.
[[nodiscard]] std::vector<std::string> searchPath();
/// What the names of program files end in: ".exe" or nothing.
[[nodiscard]] const char* programSuffix();

} // namespace platform
