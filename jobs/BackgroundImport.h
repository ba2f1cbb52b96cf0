// Imports one video at a time on a separate thread, so that the window stays responsive, checks
// whether it can be played, and reports to the UI thread. Used by the branch editor. UI thread
// only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "jobs/BackgroundJob.h"
#include "jobs/VideoImport.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"

namespace jobs {

class BackgroundImport {
public:
    /// Both must outlive the object.
    BackgroundImport(platform::EventLoop& loop, platform::FileSystem& files);
    /// Cancels a running import and waits for it to end without reporting anything.
    ~BackgroundImport();
    BackgroundImport(const BackgroundImport&) = delete;
    BackgroundImport& operator=(const BackgroundImport&) = delete;

    /// Calls `onProgress` now and then and `onDone` once, when isRunning() is false again, both on
    /// the UI thread. Must not be called while an import is running.
    void start(const std::string& source, const std::string& destination,
               std::function<void()> onProgress, std::function<void(const ImportReport&)> onDone);
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_job.isRunning(); }
    /// Of the running or the last import.
    [[nodiscard]] std::uint64_t copiedBytes() const { return m_progress->copiedBytes; }
    [[nodiscard]] std::uint64_t totalBytes() const { return m_progress->totalBytes; }

private:
    platform::FileSystem& m_files;
    std::shared_ptr<ImportProgress> m_progress = std::make_shared<ImportProgress>();
    BackgroundJob m_job;
};

} // namespace jobs
