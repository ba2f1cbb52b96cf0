// The hand-off to the product's menu program, which started this one and takes over again at the
// end. Nothing is logged; every failure leads to the next candidate. Main thread only.
#pragma once

#include <string>

namespace app {

/// Starts the program that the first existing "Launcher.ini" of three shared folders names, or,
/// when that does not start, the menu program at one of two fixed places.
void handOffToLauncher();

/// Starts `program` and does not wait. `arguments` may be empty; `workingFolder` too: the program's
/// own folder then. False when the path cannot be completed, is then longer than 259 characters, or
/// the program does not start.
[[nodiscard]] bool launch(const std::string& program, const std::string& arguments,
                          const std::string& workingFolder);

} // namespace app
