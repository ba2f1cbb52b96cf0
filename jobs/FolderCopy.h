// Copies a folder under a new name in the background, whole or not at all: what a failed or
// cancelled copy has made is removed again. Links are never followed: a folder that holds one is
// not copied. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"

namespace jobs {

/// A file that is written from memory, behind all others, in place of the one with this name.
struct LastFile {
    std::string name;
    std::string bytes;
};

/// The failure of a copy that was cancelled.
inline constexpr const char* kCopyCancelled = "cancelled";

class FolderCopy {
public:
    /// Empty after success; else why there is no copy.
    using Done = std::function<void(const std::string& failure)>;

    /// Both outlive the object.
    FolderCopy(platform::EventLoop& loop, platform::FileSystem& files);
    /// Cancels a running copy and waits until what it has made is removed.
    ~FolderCopy();
    FolderCopy(const FolderCopy&) = delete;
    FolderCopy& operator=(const FolderCopy&) = delete;

    /// `from` and `to` are absolute and end in no separator; `to` must not exist. Calls
    /// `onProgress` now and then and `onDone` once. Not while a copy is running.
    void start(const std::string& from, const std::string& to, LastFile last,
               std::function<void()> onProgress, Done onDone);
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_job.isRunning(); }
    /// 0 to 100.
    [[nodiscard]] int percent() const;

private:
    struct Progress;

    platform::FileSystem& m_files;
    std::shared_ptr<Progress> m_progress;
    BackgroundJob m_job;
};

} // namespace jobs
