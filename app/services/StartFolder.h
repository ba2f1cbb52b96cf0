// The folder in which the program works: it contains the skin, the texts, the scenes and the log.
#pragma once

#include <string>

namespace app {

struct StartFolder {
    bool isOurs = false; ///< the current folder is the product's, so the log may be written there
    std::string problem; ///< why the program cannot start, for its user; empty if it can
};

/// Stays in the current folder if it has "UI" or "Scenes"; else changes to `programFolder`, where
/// the program file is. Call this before anything that opens a file, including the log.
[[nodiscard]] StartFolder enterStartFolder(const std::string& programFolder);

} // namespace app
