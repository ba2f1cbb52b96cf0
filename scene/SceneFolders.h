// Which scenes exist and where they are stored: the folders under "Scenes/" in the working
// directory that contain a "Scene.xml". Used by the windows and by loading and saving.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scene {

/// The folder of all scenes, in the working directory.
inline constexpr const char* kScenesFolder = "Scenes";
/// The scene's file in its folder.
inline constexpr const char* kSceneFileName = "Scene.xml";

struct ListedScene {
    std::string name;       ///< of its folder, as stored (UTF-8 or not)
    std::int64_t saved = 0; ///< when it was saved last, as Clock::now()
};
/// All scenes on offer, in directory order. A folder that contains a file "Replaced" is left out: a
/// newer scene has replaced it. Empty when "Scenes/" cannot be read.
[[nodiscard]] std::vector<ListedScene> listScenesAndTimes();

/// The folder of all scenes, ending in "/". Dialogs for videos begin here the first time.
[[nodiscard]] std::string scenesFolderPath();

/// Whether a scene saved as `name` has a folder of its own right below "Scenes/", as all that
/// listScenesAndTimes() finds have.
[[nodiscard]] bool canBeListed(std::string_view name);

/// Whether every system can have a folder of that name and gives the same name back: no character
/// or word that Windows keeps for itself, no blank or dot at the end.
[[nodiscard]] bool isGoodFolder(std::string_view name);

/// Where the scene `scene` has the video `name`; empty when the working directory is unknown.
[[nodiscard]] std::string videoPath(const std::string& scene, const std::string& name);

/// The folder of the scene `name`, ending in "\" whatever the system's own separator: working
/// directory + "Scenes/" + name + "\". Empty when the working directory is unknown.
[[nodiscard]] std::string sceneFolderPath(const std::string& name);

/// The same folder, ending in "/", which programs of every system take.
[[nodiscard]] std::string endingInSlash(std::string sceneFolder);

} // namespace scene
