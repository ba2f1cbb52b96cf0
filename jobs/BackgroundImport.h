// Runs one video import at a time on a thread of its own, so that the window stays alive, looks
// whether the file can be played, and reports back on the UI thread. Used by the branch editor. UI
// thread only.
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
    /// Both outlive the object.
    BackgroundImport(platform::EventLoop& loop, platform::FileSystem& files);
    /// Cancels a running import and waits for its end; nothing is reported any more.
    ~BackgroundImport();
    BackgroundImport(const BackgroundImport&) = delete;
    BackgroundImport& operator=(const BackgroundImport&) = delete;

    /// Called on the UI thread; `onProgress` now and then, `onDone` once, when isRunning() is false
    /// again. Not while an import is running.
    void start(const std::string& source, const std::string& destination,
               std::function<void()> onProgress, std::function<void(const ImportReport&)> onDone);
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_job.isRunning(); }
    /// Of the running import, or the last.
    [[nodiscard]] std::uint64_t copiedBytes() const { return m_progress->copiedBytes; }
    [[nodiscard]] std::uint64_t totalBytes() const { return m_progress->totalBytes; }

private:
    platform::FileSystem& m_files;
    std::shared_ptr<ImportProgress> m_progress = std::make_shared<ImportProgress>();
    BackgroundJob m_job;
};

} // namespace jobs
