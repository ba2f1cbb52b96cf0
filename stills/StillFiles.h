// The stills on the disk: one file for each clip, named after its path, in the cache folder.
// Whatever stands there may be damaged or foreign, and all of it can be made again. One thread at a
// time.
#pragma once

#include <cstdint>
#include <string>

#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "stills/Still.h"

namespace stills {

/// Pictures on the disk fit into it; a request for a larger one gets this much.
inline constexpr platform::Size kLargestBox{272, 153};

class StillFiles {
public:
    /// `folder` ends in a separator; empty for no files at all. `files` outlives the object. Keeps
    /// at most `maxBytes`.
    StillFiles(platform::FileSystem& files, std::string folder, std::uint64_t maxBytes);

    /// Fills the picture, frame and seconds of `still`, whose other facts are those of the file
    /// now. False if they are not kept for just this file.
    [[nodiscard]] bool read(const std::string& path, Still& still);
    /// Failures are passed over.
    void write(const std::string& path, const Still& still);

private:
    [[nodiscard]] std::string fileOf(const std::string& path) const;
    void removeOldest();

    platform::FileSystem& m_files;
    std::string m_folder;
    std::uint64_t m_maxBytes;
    std::uint64_t m_written; ///< since the oldest were removed
};

} // namespace stills
