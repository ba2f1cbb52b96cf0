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

/// Folders of the user, UTF-8, without a final separator; empty where the system has no such.
struct UserFolders {
    std::string documents;
    std::string settings; ///< in which each program has a folder of its own
};
[[nodiscard]] UserFolders userFolders();
/// `text` with the values of the environment's variables in place of their names, written as the
/// system's users do ("%USERNAME%").
[[nodiscard]] std::string expandVariables(const std::string& text);

} // namespace platform
