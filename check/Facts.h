// What checking a scene needs to know about the files in its folder. Plain values: FactsReader.h
// reads them, away from the UI thread.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "check/Finding.h"

namespace check {

/// Frames with some property: how many, and the first and last of them.
struct FrameTally {
    std::int64_t count = 0;
    FrameRange range{};

    /// Frames up to `end`, excluded; behind those added before.
    void add(int first, int end) {
        range = {count == 0 ? first : range.first, end - 1};
        count += end - first;
    }
    friend bool operator==(const FrameTally&, const FrameTally&) = default;
};

/// A zone as it was saved, brought to the length of its video.
struct ZoneFacts {
    std::string name{};
    bool hasShapes = false; ///< false: only its name is known
    int storedFrames = 0;
    std::int64_t activeFrames = 0;
    FrameTally fewPoints{}; ///< active frames alone, as in the next
    FrameTally outside{};

    friend bool operator==(const ZoneFacts&, const ZoneFacts&) = default;
};

/// The same for all paths to one file; 0 if unknown.
struct FileId {
    std::uint64_t volume = 0;
    std::uint64_t file = 0;

    friend auto operator<=>(const FileId&, const FileId&) = default;
};

struct VideoFacts {
    enum class State {
        unknown, ///< not read yet: there is nothing to say about it
        missing,
        unreadable,
        good
    };
    State state = State::unknown;
    FileId id{};
    // Of a good one.
    int width = 0;
    int frameCount = -1; ///< -1 if unknown
    double keyFrameSeconds = 0.0;
    // Of any but an unknown one.
    bool hasZoneFiles = false;
    std::vector<ZoneFacts> zones{};

    friend bool operator==(const VideoFacts&, const VideoFacts&) = default;
};

struct FolderFacts {
    /// By the names that branches use. One that is not here is unknown.
    std::map<std::string, std::shared_ptr<const VideoFacts>> videos{};
    /// All files of the folder that are videos by their names.
    std::map<std::string, FileId> files{};
    /// Names of videos that are being copied into the folder: nothing is said about them.
    std::set<std::string> copying{};
};

} // namespace check
