#include "jobs/BackgroundImport.h"

#include <exception>
#include <system_error>
#include <utility>

#include "src/TheoraProbe.h"

namespace jobs {

BackgroundImport::BackgroundImport(platform::EventLoop& loop, platform::FileSystem& files)
    : m_loop(loop), m_files(files) {}

BackgroundImport::~BackgroundImport() {
    cancel();
    if (m_run) {
        m_run->onProgress = nullptr;
        m_run->onDone = nullptr;
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void BackgroundImport::start(const std::string& source, const std::string& destination,
                             std::function<void()> onProgress,
                             std::function<void(const ImportReport&)> onDone) {
    m_run = std::make_shared<Run>();
    m_run->onProgress = std::move(onProgress);
    m_run->onDone = [this, done = std::move(onDone)](const ImportReport& report) {
        finish();
        done(report);
    };
    try {
        m_thread = std::thread([run = m_run, source, destination, &loop = m_loop,
                                &files = m_files] { work(run, source, destination, loop, files); });
    } catch (const std::system_error&) {
        m_loop.post([run = m_run] { end(*run, {ImportResult::failed, "out of threads"}); });
    }
}

void BackgroundImport::work(const std::shared_ptr<Run>& run, const std::string& source,
                            const std::string& destination, platform::EventLoop& loop,
                            platform::FileSystem& files) {
    const auto reportProgress = [&run, &loop] {
        if (!run->progressPosted.exchange(true)) {
            loop.post([run] {
                run->progressPosted = false;
                if (run->onProgress) {
                    run->onProgress();
                }
            });
        }
    };
    ImportReport report;
    try {
        report = importVideo(files, source, destination, run->progress, reportProgress);
        const bool isIn =
            report.result == ImportResult::copied || report.result == ImportResult::sameFile;
        report.isPlayable = !isIn || theora::hasTheoraHeaders(destination, files);
    } catch (const std::exception&) {
        // Nothing but the temporary was touched, and that is gone again.
        report = {ImportResult::failed, "out of memory"};
    }
    loop.post([run, report = std::move(report)] { end(*run, report); });
}

void BackgroundImport::end(Run& run, const ImportReport& report) {
    // The callback may end the import's owner and, with it, the callback's own home.
    const auto done = std::exchange(run.onDone, nullptr);
    run.onProgress = nullptr;
    if (done) {
        done(report);
    }
}

void BackgroundImport::finish() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
    m_run.reset();
}

void BackgroundImport::cancel() {
    if (m_run) {
        m_run->progress.cancelled = true;
    }
}

std::uint64_t BackgroundImport::copiedBytes() const {
    return m_run ? m_run->progress.copiedBytes.load() : 0;
}

std::uint64_t BackgroundImport::totalBytes() const {
    return m_run ? m_run->progress.totalBytes.load() : 0;
}

} // namespace jobs
