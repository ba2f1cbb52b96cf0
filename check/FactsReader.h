// Reads what checking a scene needs to know of the files in its folder, each file once and again
// when its size or time has changed. The time that a file takes is bounded, whatever it holds.
// Logs nothing.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "check/Facts.h"
#include "check/SceneCheck.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"

namespace scene {
class SceneManager;
}

namespace check {

/// Any thread, one at a time.
class FactsReader {
public:
    /// `folder` ends in a separator; `files` and `clock` outlive the reader. Zones are read as
    /// everywhere, through the file system of core::services().
    FactsReader(platform::FileSystem& files, platform::Clock& clock, std::string folder)
        : m_files(files), m_clock(clock), m_folder(std::move(folder)) {}

    [[nodiscard]] const std::string& folder() const { return m_folder; }
    /// Of the videos of these names, but those being copied, and of all video files of the folder.
    /// Once `isStopped` returns true, the facts are incomplete.
    [[nodiscard]] FolderFacts read(const std::set<std::string>& videos,
                                   const std::set<std::string>& copying,
                                   const std::function<bool()>& isStopped);

private:
    /// A file as it was when it was read.
    struct Stamp {
        FileId id{};
        std::uint64_t size = 0;
        std::int64_t modified = 0;

        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    /// Of the video, its list of zones and their shapes; empty for a missing file.
    using Stamps = std::array<std::optional<Stamp>, 3>;
    struct Known {
        Stamps stamps;
        std::shared_ptr<const VideoFacts> facts;
        bool isSettled = false; ///< no file had changed in the second in which it was read
    };

    [[nodiscard]] std::optional<Stamp> stampOf(const std::string& path);
    [[nodiscard]] VideoFacts readVideo(const std::string& name, const Stamps& stamps,
                                       const std::function<bool()>& isStopped);
    void listFiles(FolderFacts& facts);

    platform::FileSystem& m_files;
    platform::Clock& m_clock;
    const std::string m_folder;
    std::map<std::string, Known> m_known;
};

/// The videos that branches of the scene have.
[[nodiscard]] std::set<std::string> videosOf(const scene::SceneManager& scene);

/// The saved scene in `folder`, which ends in a separator, with all its findings: as the rows of a
/// list of scenes count them. Empty if it cannot be read, or once `isStopped` returns true. Logs
/// nothing. Any thread.
[[nodiscard]] std::optional<Counts> countFindings(platform::FileSystem& files,
                                                  platform::Clock& clock, const std::string& folder,
                                                  const std::function<bool()>& isStopped);

} // namespace check
