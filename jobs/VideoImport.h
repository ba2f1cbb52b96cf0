// Brings a video file into a scene's folder without ever harming a file: the copy goes to a
// temporary beside the destination and takes its place only when it is complete. Used by the branch
// editor, on a thread of its own for the sake of large files.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "platform/FileSystem.h"

namespace jobs {

enum class ImportResult {
    copied,
    sameFile,  ///< source and destination are one file: nothing to copy, a success
    failed,    ///< source unreadable, disk full, destination not writable, ...
    cancelled, ///< counts as failed
};

struct ImportReport {
    ImportResult result = ImportResult::failed;
    std::string reason{};   ///< of a failure, in the system's words where it has some
    bool isPlayable = true; ///< false for a file that came in and is no Theora video
};

/// Shared by the copying thread and the one that watches it.
struct ImportProgress {
    std::atomic<std::uint64_t> copiedBytes{0};
    std::atomic<std::uint64_t> totalBytes{0};
    std::atomic<bool> cancelled{false}; ///< set by the watcher; honoured within one block
};

/// The temporary's name inside the destination's folder.
inline constexpr const char* kImportTemporary = "VideoCopy.part";

/// Copies `source` to `destination`, whose folders are made where missing. Both are UTF-8 paths.
/// Source and destination are compared as files (volume and index), so that a file of the scene's
/// folder never replaces itself, however its path is spelled. Unless the result is `copied`, an
/// existing destination is as it was. `onBlock` is called on this thread after each block copied.
/// Whether the file can be played is not looked at. Any thread.
[[nodiscard]] ImportReport importVideo(platform::FileSystem& files, const std::string& source,
                                       const std::string& destination, ImportProgress& progress,
                                       const std::function<void()>& onBlock);

} // namespace jobs
