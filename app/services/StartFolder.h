// The folder that the program works in: its skin, its texts, the scenes and the log page are there.
#pragma once

#include <string>

namespace app {

struct StartFolder {
    bool isOurs = false; ///< the current folder is the product's, so the log page may go there
    std::string problem; ///< why the program cannot start, for its user; empty when it can
};

/// Stays in the current folder when it has "UI" or "Scenes"; else goes to `programFolder`, the one
/// that the program's own file lies in. Comes before everything that names a file: before the log.
[[nodiscard]] StartFolder enterStartFolder(const std::string& programFolder);

} // namespace app
