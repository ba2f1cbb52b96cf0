#include "app/services/StartFolder.h"

#include "app/services/UserTree.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/Texts.h"
#include "platform/FileSystem.h"
#include "scene/SceneFolders.h"

namespace app {
namespace {

constexpr const char* kSkinFolder = "UI";
constexpr const char* kSkinArchive = "UI.zip"; // a skin may come as one file

bool hasSkin(const std::string& folder = {}) {
    return core::isFolder(folder + kSkinFolder) || core::isFile(folder + kSkinArchive);
}

StartProblem missingSkin(const std::string& startedIn, const std::string& installed) {
    const std::string now = core::services().fileSystem->currentFolder();
    return startProblem({now, installed}, [&] {
        return core::trStored("Quorvel cannot start because its folder \"UI\" is missing."_tr) +
               "\n\n" + core::trStored("Looked for in:"_tr) + "\n" + startedIn +
               (now != startedIn ? "\n" + now : std::string());
    });
}

StartFolder enterUserTree(const std::string& programFolder, const platform::UserFolders& user) {
    platform::FileSystem& files = *core::services().fileSystem;
    StartFolder result;
    result.installation = {core::withSeparator(programFolder), userPlaceFile(user)};
    const std::string startedIn = files.currentFolder();
    // The folder of the program itself is the tree of nobody.
    if (!hasSkin() || isShared(startedIn)) {
        const UserTree tree = prepareUserTree(programFolder, user);
        result.problem = tree.problem;
        if (!tree.problem.empty() || !files.setCurrentFolder(tree.workingFolder)) {
            return result;
        }
    }
    result.isOurs = true;
    if (!hasSkin() && !hasSkin(result.installation.folder)) {
        result.problem = missingSkin(programFolder, programFolder);
    }
    return result;
}

} // namespace

StartFolder enterStartFolder(const std::string& programFolder, const platform::UserFolders& user) {
    if (isShared(programFolder)) {
        return enterUserTree(programFolder, user);
    }
    platform::FileSystem& files = *core::services().fileSystem;
    const std::string startedIn = files.currentFolder();
    const bool stays = hasSkin() || core::isFolder(scene::kScenesFolder);
    if (!stays && !programFolder.empty()) {
        files.setCurrentFolder(programFolder);
    }
    StartFolder result;
    // A folder "Scenes" alone proves nothing: a "Log.html" beside it may be anybody's.
    result.isOurs = hasSkin() || files.currentFolder() == programFolder;
    if (!hasSkin()) {
        result.problem = missingSkin(startedIn, programFolder);
    }
    return result;
}

} // namespace app
