// The earlier versions of one scene file or one pair of zone files: how their files are named,
// which there are, and which go again. Nothing here logs or throws anything but std::bad_alloc; any
// thread.
//
// Their names are KEPT-NUMBER-SAVED[-damaged] and the name of the file that was replaced, without
// what names the video: "20261122T145203Z-0-20261120T112005Z-Scene.xml". Times are UTC.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/FileSystem.h"

namespace recovery {

inline constexpr std::string_view kSceneVersionEnding = "-Scene.xml";
inline constexpr std::string_view kZoneListVersionEnding = "-ZoneInfo.xml";
inline constexpr std::string_view kZoneShapesVersionEnding = "-ZoneInfo.bin";

inline constexpr std::size_t kNewestKept = 20;
inline constexpr std::int64_t kDaysKept = 30;
/// How far the clock may have been ahead when a version was kept.
inline constexpr std::int64_t kMostDaysAhead = 366;
inline constexpr std::uint64_t kMaxBackupBytes = std::uint64_t{1} << 30U;

/// The highest that a name has room for.
inline constexpr int kMaxVersionNumber = 9999;

struct Version {
    std::string base;       ///< the path of its files up to their endings
    std::int64_t kept = 0;  ///< when a save replaced it, as Clock::now(); never decreases
    int number = 0;         ///< distinguishes what was kept in the same second
    std::int64_t saved = 0; ///< when it had been saved
    bool isDamaged = false; ///< files that could not be read whole
    std::uint64_t bytes = 0;
    std::vector<std::string> endings; ///< of the files it has, sorted

    /// The path that such a version has in `folder`, up to the endings of its files.
    [[nodiscard]] std::string baseIn(const std::string& folder) const;
};

struct VersionList {
    std::vector<Version> versions; ///< newest first
    std::vector<std::string> odd;  ///< paths of what is no version, which is left alone
};

/// Of a folder that ends in a separator; nothing when it is not there. Folders in it, which hold
/// versions of their own, are passed over. One of a day far ahead counts as odd: no other could
/// follow it.
[[nodiscard]] VersionList listVersions(platform::FileSystem& files, platform::Clock& clock,
                                       const std::string& folder);

/// Those of `versions`, newest first, that are neither among the newest nor the first of one of the
/// last days. Damaged ones stay.
[[nodiscard]] std::vector<Version> surplusOf(const std::vector<Version>& versions,
                                             platform::Clock& clock);

/// Whether both files can be read and hold the same bytes. False as well once `stop` is requested,
/// which is looked at between blocks.
[[nodiscard]] bool haveEqualBytes(platform::FileSystem& files, const std::string& a,
                                  const std::string& b, const std::stop_token& stop = {});

/// Removes what is surplus in `folder`, and the oldest versions below `backups` until no more than
/// `maxBytes` are left. The newest of each folder and damaged ones stay: one huge version must not
/// cost every other scene its last one. Leaves the rest for the next time once `stop` is requested.
/// Returns the odd paths.
std::vector<std::string> tidy(platform::FileSystem& files, platform::Clock& clock,
                              const std::string& backups, const std::string& folder,
                              std::uint64_t maxBytes = kMaxBackupBytes,
                              const std::stop_token& stop = {});

void removeVersion(platform::FileSystem& files, const Version& version);

} // namespace recovery
