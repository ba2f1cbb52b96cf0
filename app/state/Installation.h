// What an installation that all users of a computer share has outside the tree of the one who runs
// it.
#pragma once

#include <string>

namespace app_state {

struct Installation {
    /// Where skin, texts and manual are that the working directory lacks; ends in a separator.
    /// Empty: every user has an installation of their own.
    std::string folder;
    /// The file whose line `kFolderKey` says where this user's tree is, from the next start on.
    std::string placeFile;

    static constexpr const char* kFolderKey = "folder";
};

} // namespace app_state
