// Copies a video file into a scene's folder without ever damaging a file: the copy is written to a
// temporary file next to the destination and replaces it only when complete.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "src/TheoraProbe.h"

namespace jobs {

enum class ImportResult {
    copied,
    sameFile,  ///< source and destination are the same file; counts as success
    failed,    ///< source unreadable, disk full, destination not writable, ...
    cancelled, ///< counts as a failure
};

struct ImportReport {
    ImportResult result = ImportResult::failed;
    std::string reason{};  ///< of a failure, in the system's words if available
    theora::Probe probe{}; ///< of the imported file
};

/// Shared by the copying thread and the one that observes it.
struct ImportProgress {
    std::atomic<std::uint64_t> copiedBytes{0};
    std::atomic<std::uint64_t> totalBytes{0};
    std::atomic<bool> cancelled{false}; ///< set by the observer; takes effect within one block
};

/// The name of this program's temporary file in the destination's folder: two programs may copy
/// into the same one.
[[nodiscard]] const std::string& importTemporary();
/// Another such name, for a file that this program writes at the same time.
[[nodiscard]] std::string newTemporary();
/// Whether a file of that name is an unfinished copy, of any program.
[[nodiscard]] bool isImportTemporary(std::string_view name);

/// Removes unfinished copies that nobody has written to for an hour. `folder` ends in a separator.
void removeLeftovers(platform::FileSystem& files, const std::string& folder);

/// Copies `source` to `destination`, creating missing folders. Both are UTF-8 paths.
/// Source and destination are compared as files (volume and index), so that a file of the scene's
/// folder never replaces itself, however its path is spelled. Unless the result is `copied`, an
/// existing destination is unchanged. `onBlock` is called on this thread after each block copied.
/// Removes unfinished copies that nobody has written to for an hour from the destination's folder.
/// Does not check whether the file can be played. Any thread.
[[nodiscard]] ImportReport importVideo(platform::FileSystem& files, const std::string& source,
                                       const std::string& destination, ImportProgress& progress,
                                       const std::function<void()>& onBlock);

} // namespace jobs
