// Which scenes there are and where they lie. Scenes are the folders under "Scenes/" in the working
// directory that hold a "Scene.xml". Used by the open scene window and the branch editor.
#pragma once

#include <string>
#include <vector>

namespace ui {

/// The folder names of all scenes on offer, as stored (UTF-8 or not), in the order in which the
/// folder lists them. A folder with a file "Replaced" is left out: a newer scene stands in for it.
/// Empty when "Scenes/" cannot be read.
[[nodiscard]] std::vector<std::string> listScenes();

/// The folder of the scene `name`, ending in "\" whatever the system's own separator: working
/// directory + "Scenes/" + name + "\". Empty when the working directory is unknown.
[[nodiscard]] std::string sceneFolderPath(const std::string& name);

} // namespace ui
