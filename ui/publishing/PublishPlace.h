// Where a scene is published unless its author chooses another folder. Main thread only.
#pragma once

#include <string>

namespace platform {
class FileSystem;
}

namespace ui {

/// Relative to the working directory, without a final separator: "Published/Fire Drill".
[[nodiscard]] std::string usualPublishFolder(platform::FileSystem& files, const std::string& scene);

/// The name within `parent` of the folder of this scene's page: where it was published under its
/// encoded name, that; else the scene's own name, if every system takes it for a file, it cannot be
/// mistaken for an encoded one and nobody else's folder there has it in other letter case or
/// something else in it; else an encoded one.
[[nodiscard]] std::string publishFolderName(platform::FileSystem& files, const std::string& parent,
                                            const std::string& scene);

} // namespace ui
