#include "scene/SceneFolders.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/Paths.h"
#include "core/Services.h"
#include "platform/FileSystem.h"
#include "platform/QuickInfo.h"

namespace scene {

namespace {

/// Empty unless the scene is on offer.
std::optional<std::int64_t> savedTime(const std::string& name) {
    const std::string folder = std::string(kScenesFolder) + "/" + name;
    const auto file =
        platform::quickInfo(*core::services().fileSystem, folder + "/" + kSceneFileName);
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

std::string videoPath(const std::string& scene, const std::string& name) {
    const std::string folder = sceneFolderPath(scene);
    return folder.empty() ? folder : folder + name;
}

bool canBeListed(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\") == std::string_view::npos;
}

bool isGoodFolder(std::string_view name) {
    return !name.empty() && !core::isDeviceName(name) && name.back() != ' ' && name.back() != '.' &&
           std::none_of(name.begin(), name.end(), [](char c) {
               return static_cast<unsigned char>(c) < 0x20 ||
                      std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos;
           });
}

std::string scenesFolderPath() {
    return core::currentDirectory() + core::withSeparator(kScenesFolder);
}

std::string sceneFolderPath(const std::string& name) {
    const std::string current = core::currentDirectory();
    return current.empty() ? std::string() : current + kScenesFolder + "/" + name + "\\";
}

std::string endingInSlash(std::string sceneFolder) {
    if (sceneFolder.ends_with('\\')) {
        sceneFolder.back() = '/';
    }
    return sceneFolder;
}

} // namespace scene
