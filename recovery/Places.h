// Where the program keeps what is its own and not part of a scene: beside the folder of the scenes,
// in the working directory. Nothing here creates anything. Main thread only, except encodedName.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace recovery {

// Folders, each ending in a separator, and files; absolute, empty if the working directory is
// unknown.
/// Unsaved work.
[[nodiscard]] std::string draftsFolder();
/// Earlier versions of saved files.
[[nodiscard]] std::string backupsFolder();
/// What can be made again at any time.
[[nodiscard]] std::string cacheFolder();
/// The settings of this editor.
[[nodiscard]] std::string editorIniPath();
/// When scenes were opened.
[[nodiscard]] std::string recentScenesPath();

/// Encoded names are never longer.
inline constexpr std::size_t kMaxEncodedBytes = 96;

/// One plain file name, valid on every system, for any text: a scene or video name, even if it is
/// empty, "..", a path, very long or not UTF-8. Different texts have different encoded names, also
/// where the system ignores case. An encoded name has only a-z, 0-9 and "+-_%", and still shows
/// what it stands for: "Fire Drill" is "+fire_+drill". Any thread.
[[nodiscard]] std::string encodedName(std::string_view name);

} // namespace recovery
