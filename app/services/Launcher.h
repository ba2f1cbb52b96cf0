// Hands over to the product's menu program, which started this one, at the end. Nothing is logged;
// after a failure the next candidate is tried. Main thread only.
#pragma once

#include <string>

namespace app {

/// Starts the program named by the first "Launcher.ini" found in three shared folders or, if that
/// does not start, the menu program at one of two fixed places.
void handOffToLauncher();

/// Starts `program` without waiting. `arguments` may be empty; if `workingFolder` is, the program's
/// own folder is used. False if the full path is unknown or longer than 259 characters, or if the
/// program does not start.
[[nodiscard]] bool launch(const std::string& program, const std::string& arguments,
                          const std::string& workingFolder);

} // namespace app
