#include "app/services/StartFolder.h"

#include "core/Paths.h"
#include "core/Services.h"
#include "platform/FileSystem.h"
#include "scene/SceneFolders.h"

namespace app {
namespace {

constexpr const char* kSkinFolder = "UI";
constexpr const char* kSkinArchive = "UI.zip"; // a skin may come as one file

bool hasSkin() {
    return core::isFolder(kSkinFolder) || core::isFile(kSkinArchive);
}

} // namespace

StartFolder enterStartFolder(const std::string& programFolder) {
    platform::FileSystem& files = *core::services().fileSystem;
    const std::string startedIn = files.currentFolder();
    const bool stays = hasSkin() || core::isFolder(scene::kScenesFolder);
    if (!stays && !programFolder.empty()) {
        files.setCurrentFolder(programFolder);
    }
    StartFolder result;
    // A folder "Scenes" alone proves nothing: a "Log.html" beside it may be anybody's.
    result.isOurs = hasSkin() || files.currentFolder() == programFolder;
    if (hasSkin()) {
        return result;
    }
    result.problem = "Quorvel cannot start because its folder \"UI\" is missing.\n\n"
                     "Looked for in:\n" +
                     startedIn;
    if (!stays && files.currentFolder() != startedIn) {
        result.problem += '\n' + files.currentFolder();
    }
    return result;
}

} // namespace app
