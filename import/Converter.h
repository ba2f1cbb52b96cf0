// The programs that convert videos: ffmpeg, and ffprobe beside it.
#pragma once

#include <string>
#include <vector>

#include "platform/FileSystem.h"

namespace imports {

/// Absolute paths, UTF-8; both empty when there is none.
struct Converter {
    std::string ffmpeg{};
    std::string ffprobe{};

    [[nodiscard]] bool isFound() const { return !ffmpeg.empty(); }
};

struct ConverterPlaces {
    /// What the author has chosen: the path of one of the programs, or their folder; may be empty.
    std::string configured{};
    std::string programFolder{};          ///< of this program
    std::vector<std::string> path{};      ///< the folders of the system's path
    std::vector<std::string> forbidden{}; ///< folders that may hold anything: never looked into
};

/// The places of this program: its folder and the system's path; the working folder is forbidden
/// unless it is the program's own.
[[nodiscard]] ConverterPlaces usualPlaces(platform::FileSystem& files,
                                          const std::string& configured);

/// The first of the places, in their order above, that has both programs. Places that are not
/// absolute, and those within a forbidden folder, do not count. Starts nothing. Any thread.
[[nodiscard]] Converter findConverter(platform::FileSystem& files, const ConverterPlaces& places);

} // namespace imports
