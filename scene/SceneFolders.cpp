#include "scene/SceneFolders.h"

#include <optional>
#include <utility>

#include "core/Paths.h"
#include "core/Services.h"
#include "platform/FileSystem.h"

namespace scene {

namespace {

/// Empty unless the scene is on offer.
std::optional<std::int64_t> savedTime(const std::string& name) {
    const std::string folder = std::string(kScenesFolder) + "/" + name;
    const auto file = core::services().fileSystem->info(folder + "/" + kSceneFileName);
    return file && !file->isFolder && !core::isFile(folder + "/Replaced")
               ? std::optional(file->modified)
               : std::nullopt;
}

} // namespace

std::vector<ListedScene> listScenesAndTimes() {
    std::vector<std::string> folders;
    if (!core::listFolders(core::withSeparator(kScenesFolder), folders)) {
        return {};
    }
    std::vector<ListedScene> scenes;
    for (std::string& name : folders) {
        if (const auto saved = savedTime(name)) {
            scenes.push_back({std::move(name), *saved});
        }
    }
    return scenes;
}

std::vector<std::string> listScenes() {
    std::vector<std::string> names;
    for (ListedScene& scene : listScenesAndTimes()) {
        names.push_back(std::move(scene.name));
    }
    return names;
}

std::string videoPath(const std::string& scene, const std::string& name) {
    const std::string folder = sceneFolderPath(scene);
    return folder.empty() ? folder : folder + name;
}

bool canBeListed(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\") == std::string_view::npos;
}

std::string scenesFolderPath() {
    return core::currentDirectory() + core::withSeparator(kScenesFolder);
}

std::string sceneFolderPath(const std::string& name) {
    const std::string current = core::currentDirectory();
    return current.empty() ? std::string() : current + kScenesFolder + "/" + name + "\\";
}

} // namespace scene
