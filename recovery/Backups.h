// Keeps what saves replace as earlier versions. Before a save replaces a file, the file gets a
// second name in the folder of its versions; where the disk has no second names, a thread copies it
// while the save writes its new files. Saves write to other files and rename them, so nothing ever
// writes into a version. What is surplus goes on the same thread, after the save; a next save, or
// the end, stops that between two blocks. A version that was not compared to the end stays, and the
// next save compares it once more.
//
// A failure never disturbs the save, except where a file must be kept, and is in the log once. One
// for the scene, and one for the zones of each video that is edited. UI thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "core/FileError.h"
#include "core/ReplacedFiles.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"

namespace recovery {

/// The folders of the versions of a scene and of a video's zones; the video's name is that without
/// its extension. Empty when the working directory is unknown.
[[nodiscard]] std::string sceneVersionsFolder(const std::string& scene);
[[nodiscard]] std::string zoneVersionsFolder(const std::string& scene, const std::string& video);

class Backups final : public core::ReplacedFiles {
public:
    /// Both are asked at the start of each save: for the folder, as above, and whether the author
    /// wants versions.
    Backups(std::function<std::string()> folder, std::function<bool()> isWanted);
    /// Stops the thread, which leaves the rest of its work to the next save.
    ~Backups() override;
    Backups(const Backups&) = delete;
    Backups& operator=(const Backups&) = delete;

    void begin(const std::vector<std::string>& paths, Need need) noexcept override;
    [[nodiscard]] core::FileError beforeReplace() noexcept override;
    void end(bool replaced) noexcept override;

    /// Waits until what the last save has left to the thread is done.
    void settle();

private:
    struct File {
        std::string path; ///< what the save replaces
        std::string version;
    };
    /// What the thread found; read once it has ended.
    struct Report {
        core::FileError failure;
        std::vector<std::string> odd;
    };

    void start(const std::vector<std::string>& paths);
    [[nodiscard]] std::string freeBase(std::int64_t saved) const;
    /// Leaves no files if another program has just made a version of that name.
    void linkOrCopy();
    void drop();
    void tidyUp();
    /// Removes the save's version if nothing is lost without it: the same bytes were kept last, or
    /// were saved again. Removes the one before it as well if the same were kept before that.
    void removeSuperfluous(platform::FileSystem& disk, platform::Clock& clock,
                           const std::stop_token& stop) const;
    void run(std::function<void(const std::stop_token&)> work);
    void stop();
    /// In the log, unless it was said before.
    void say(const std::string& text);

    std::function<std::string()> m_folderNow;
    std::function<bool()> m_isWanted;
    std::set<std::string> m_said;
    std::jthread m_thread;
    Report m_report;
    // Of the save that runs.
    std::string m_folder;
    std::vector<File> m_files; ///< none: nothing is kept
    bool m_must = false;
    bool m_mayBeEqual = false; ///< all of the save's files were there and could be read
};

} // namespace recovery
