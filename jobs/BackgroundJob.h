// Runs one piece of work at a time on a separate thread and reports to the UI thread. The work and
// the callbacks share input and results, for example through a shared pointer. UI thread only,
// except for Control.
//
//   job.start([data](auto& control) { while (step(*data) && !control.isCancelled()) { ... } },
//             [this] { showProgress(); },
//             [this, data](bool isWhole) { show(*data, isWhole); });
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

#include "platform/EventLoop.h"

namespace jobs {

class BackgroundJob {
    struct Run;

public:
    /// What the work uses.
    class Control {
    public:
        [[nodiscard]] bool isCancelled() const;
        /// Requests a call of `onProgress`. Cheap: requests that are still pending are merged.
        void report();

    private:
        friend class BackgroundJob;
        Control(std::shared_ptr<Run> run, platform::EventLoop& loop);

        std::shared_ptr<Run> m_run;
        platform::EventLoop& m_loop;
    };
    using Work = std::function<void(Control&)>;

    /// The loop must outlive the object.
    explicit BackgroundJob(platform::EventLoop& loop);
    /// Cancels the work and waits for it to end without reporting anything.
    ~BackgroundJob();
    BackgroundJob(const BackgroundJob&) = delete;
    BackgroundJob& operator=(const BackgroundJob&) = delete;

    /// Calls `work` on the thread, `onProgress` now and then, and `onDone` once, when isRunning()
    /// is false again: with false when there is no thread or the work threw. Both are called on the
    /// UI thread. `onDone` may destroy this object. Not while a job is running. Throws, with
    /// nothing started, when there is no memory for the job itself.
    void start(Work work, std::function<void()> onProgress, std::function<void(bool)> onDone);
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_run != nullptr; }

private:
    /// Shared with the thread and the tasks it posts.
    struct Run {
        std::atomic<bool> cancelled{false};
        std::atomic<bool> reported{false};
        std::atomic<bool> abandoned{false};
        bool isWhole = false; ///< set by the thread before it posts the end
        // UI thread only, empty once abandoned.
        std::function<void()> onProgress;
        std::function<void(bool)> onDone;
    };

    static void perform(const std::shared_ptr<Run>& run, const Work& work,
                        platform::EventLoop& loop, const std::function<void()>& ending);
    /// On the UI thread again.
    static void end(Run& run);
    void finish();

    platform::EventLoop& m_loop;
    std::shared_ptr<Run> m_run;
    std::thread m_thread;
};

} // namespace jobs
