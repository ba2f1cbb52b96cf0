#include "ui/BackgroundImport.h"

#include <exception>
#include <utility>

namespace ui {

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
                             std::function<void(ImportResult)> onDone) {
    auto run = std::make_shared<Run>();
    run->onProgress = std::move(onProgress);
    run->onDone = [this, done = std::move(onDone)](ImportResult result) {
        finish();
        done(result);
    };
    m_run = run;
    m_thread = std::thread([run, source, destination, &loop = m_loop, &files = m_files] {
        const auto tellProgress = [&] {
            if (!run->progressPosted.exchange(true)) {
                loop.post([run] {
                    run->progressPosted = false;
                    if (run->onProgress) {
                        run->onProgress();
                    }
                });
            }
        };
        ImportResult result = ImportResult::failed;
        try {
            result = importVideo(files, source, destination, run->progress, tellProgress);
        } catch (const std::exception&) {
            // Out of memory: nothing but the temporary was touched, and that is gone again.
            result = ImportResult::failed;
        }
        loop.post([run, result] {
            // The callback may end this object and, with it, the callback's own home.
            const auto done = std::exchange(run->onDone, nullptr);
            run->onProgress = nullptr;
            if (done) {
                done(result);
            }
        });
    });
}

void BackgroundImport::finish() {
    m_thread.join();
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

} // namespace ui
