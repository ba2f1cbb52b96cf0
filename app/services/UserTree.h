// The product tree that each user of a shared installation has: settings, scenes and the log, in a
// folder of the user's own. Main thread only.
#pragma once

#include <string>

#include "app/services/StartProblem.h"
#include "platform/Environment.h"

namespace app {

/// Whether all users of the computer share the installation that `programFolder` belongs to: a file
/// "AllUsers.ini" beside the program says so.
[[nodiscard]] bool isShared(const std::string& programFolder);

/// The file in which this user's choice of a folder is kept, as a line "folder = ...".
[[nodiscard]] std::string userPlaceFile(const platform::UserFolders& user);

struct UserTree {
    std::string workingFolder; ///< absolute; empty if there is no tree
    StartProblem problem;      ///< why there is none
};

/// Makes what is missing of the tree: its folders, and the settings and scenes that new users get
/// from the installation's folder "Template". What is there stays as it is. The tree is in the
/// folder that the user has chosen; else in that of "AllUsers.ini", where names like %USERNAME%
/// stand for their values; else in "Quorvel" among the user's documents.
[[nodiscard]] UserTree prepareUserTree(const std::string& programFolder,
                                       const platform::UserFolders& user);

} // namespace app
