// The folder in which the program works: it contains the skin, the texts, the scenes and the log.
#pragma once

#include <string>

#include "app/services/StartProblem.h"
#include "app/state/Installation.h"
#include "platform/Environment.h"

namespace app {

struct StartFolder {
    bool isOurs = false;  ///< the current folder is the product's, so the log may be written there
    StartProblem problem; ///< why the program cannot start; empty if it can
    app_state::Installation installation; ///< filled where all users share it
};

/// Stays in the current folder if it has "UI" or "Scenes"; else changes to `programFolder`, where
/// the program file is. If all users share the installation, only "UI" counts, and instead of to
/// `programFolder` it changes to the user's tree, which is made (UserTree.h). Call this before
/// anything that opens a file, including the log.
[[nodiscard]] StartFolder enterStartFolder(const std::string& programFolder,
                                           const platform::UserFolders& user);

} // namespace app
