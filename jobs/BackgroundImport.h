// Runs one video import at a time on a thread of its own, so that the window stays alive, looks
// whether the file can be played, and reports back on the UI thread. Used by the branch editor. UI
// thread only.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>

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
    [[nodiscard]] bool isRunning() const { return m_run != nullptr; }
    [[nodiscard]] std::uint64_t copiedBytes() const;
    [[nodiscard]] std::uint64_t totalBytes() const;

private:
    /// Shared with the thread and the tasks it posts.
    struct Run {
        ImportProgress progress;
        std::atomic<bool> progressPosted{false};
        std::function<void()> onProgress;                ///< UI thread only, empty once abandoned
        std::function<void(const ImportReport&)> onDone; ///< UI thread only, empty once abandoned
    };

    /// The thread's work.
    static void work(const std::shared_ptr<Run>& run, const std::string& source,
                     const std::string& destination, platform::EventLoop& loop,
                     platform::FileSystem& files);
    /// On the UI thread again.
    static void end(Run& run, const ImportReport& report);
    void finish();

    platform::EventLoop& m_loop;
    platform::FileSystem& m_files;
    std::shared_ptr<Run> m_run;
    std::thread m_thread;
};

} // namespace jobs
