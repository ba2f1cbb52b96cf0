#include "jobs/BackgroundJob.h"

#include <exception>
#include <system_error>
#include <utility>

namespace jobs {

BackgroundJob::Control::Control(std::shared_ptr<Run> run, platform::EventLoop& loop)
    : m_run(std::move(run)), m_loop(loop) {}

bool BackgroundJob::Control::isCancelled() const {
    return m_run->cancelled;
}

void BackgroundJob::Control::report() {
    if (m_run->reported.exchange(true)) {
        return; // the pending call will show this as well
    }
    m_loop.post([run = m_run] {
        run->reported = false;
        if (run->onProgress) {
            run->onProgress();
        }
    });
}

BackgroundJob::BackgroundJob(platform::EventLoop& loop) : m_loop(loop) {}

BackgroundJob::~BackgroundJob() {
    cancel();
    if (m_run) {
        m_run->onProgress = nullptr;
        m_run->onDone = nullptr;
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void BackgroundJob::start(Work work, std::function<void()> onProgress,
                          std::function<void(bool)> onDone) {
    m_run = std::make_shared<Run>();
    m_run->onProgress = std::move(onProgress);
    m_run->onDone = [this, done = std::move(onDone)](bool isWhole) {
        finish();
        done(isWhole);
    };
    try {
        m_thread = std::thread(
            [run = m_run, work = std::move(work), &loop = m_loop] { perform(run, work, loop); });
    } catch (const std::system_error&) {
        m_loop.post([run = m_run] { end(*run, false); });
    }
}

void BackgroundJob::perform(const std::shared_ptr<Run>& run, const Work& work,
                            platform::EventLoop& loop) {
    bool isWhole = false;
    try {
        Control control(run, loop);
        work(control);
        isWhole = true;
    } catch (const std::exception&) {
        isWhole = false;
    }
    loop.post([run, isWhole] { end(*run, isWhole); });
}

void BackgroundJob::end(Run& run, bool isWhole) {
    // The callback may destroy the job and thereby the member that holds the callback.
    const auto done = std::exchange(run.onDone, nullptr);
    run.onProgress = nullptr;
    if (done) {
        done(isWhole);
    }
}

void BackgroundJob::finish() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
    m_run.reset();
}

void BackgroundJob::cancel() {
    if (m_run) {
        m_run->cancelled = true;
    }
}

} // namespace jobs
