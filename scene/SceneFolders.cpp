#include "scene/SceneFolders.h"

#include <utility>

#include "core/Paths.h"

namespace scene {

namespace {

bool isOffered(const std::string& name) {
    const std::string folder = std::string(kScenesFolder) + "/" + name;
    return !core::isFile(folder + "/Replaced") && core::isFile(folder + "/" + kSceneFileName);
}

} // namespace

std::vector<std::string> listScenes() {
    std::vector<std::string> folders;
    if (!core::listFolders(core::withSeparator(kScenesFolder), folders)) {
        return {};
    }
    std::vector<std::string> scenes;
    for (std::string& name : folders) {
        if (isOffered(name)) {
            scenes.push_back(std::move(name));
        }
    }
    return scenes;
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
