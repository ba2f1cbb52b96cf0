#include "jobs/BackgroundJob.h"

#include <chrono>
#include <exception>
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
        m_run->abandoned = true;
        m_run->onProgress = nullptr;
        m_run->onDone = nullptr;
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void BackgroundJob::start(Work work, std::function<void()> onProgress,
                          std::function<void(bool)> onDone) {
    const auto run = std::make_shared<Run>();
    run->onProgress = std::move(onProgress);
    run->onDone = [this, done = std::move(onDone)](bool isWhole) {
        finish();
        done(isWhole);
    };
    // Made here, where running out of memory still leaves everything as it was.
    const std::function<void()> ending = [run] { end(*run); };
    try {
        m_thread = std::thread([run, ending, work = std::move(work), &loop = m_loop] {
            perform(run, work, loop, ending);
        });
    } catch (const std::exception&) {
        m_loop.post(ending); // no thread or no memory
    }
    m_run = run;
}

void BackgroundJob::perform(const std::shared_ptr<Run>& run, const Work& work,
                            platform::EventLoop& loop, const std::function<void()>& ending) {
    try {
        Control control(run, loop);
        work(control);
        run->isWhole = true;
    } catch (const std::exception&) {
        run->isWhole = false;
    }
    // The window waits for this one call, so it is repeated while there is no memory for it.
    while (!run->abandoned) {
        try {
            loop.post(ending);
            return;
        } catch (const std::exception&) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
}

void BackgroundJob::end(Run& run) {
    // The callback may destroy the job and so the member that holds the callback.
    const auto done = std::exchange(run.onDone, nullptr);
    run.onProgress = nullptr;
    if (done) {
        done(run.isWhole);
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
