// Reads the earlier versions on a thread of their own, the newest first, so that a long history of
// large files never holds the window. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "recovery/Versions.h"
#include "ui/VersionHistory.h"

namespace ui {

class VersionReader {
public:
    struct Row {
        recovery::Version version;
        std::string summary; ///< empty when it cannot be read
    };

    /// The loop and `files` outlive it.
    VersionReader(platform::EventLoop& loop, platform::FileSystem& files, VersionHistory history);
    /// Stops at the next block of the version that is being read.
    ~VersionReader();
    VersionReader(const VersionReader&) = delete;
    VersionReader& operator=(const VersionReader&) = delete;

    /// Calls `onRows` with those that have been read since, again and again, and `onEnd` once.
    void readAll(std::function<void(std::vector<Row>)> onRows, std::function<void()> onEnd);
    /// Calls `onRead` with everything about that version; only for the one asked for last.
    void read(const recovery::Version& version, std::function<void(VersionDetails)> onRead);
    [[nodiscard]] const VersionHistory& history() const { return m_history; }

private:
    struct Wanted {
        recovery::Version version;
        std::function<void(VersionDetails)> onRead;
    };
    struct Found;

    void readNext();
    void takeRows(const std::function<void(std::vector<Row>)>& onRows);

    platform::FileSystem& m_files;
    const VersionHistory m_history;
    std::shared_ptr<Found> m_found;
    std::optional<Wanted> m_wanted;
    jobs::BackgroundJob m_rows;
    jobs::BackgroundJob m_details;
};

} // namespace ui
