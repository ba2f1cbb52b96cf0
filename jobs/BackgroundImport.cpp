#include "jobs/BackgroundImport.h"

#include <utility>

#include "core/Texts.h"
#include "src/TheoraProbe.h"

namespace jobs {
namespace {

ImportReport importAndProbe(platform::FileSystem& files, const std::string& source,
                            const std::string& destination, ImportProgress& progress,
                            BackgroundJob::Control& control) {
    ImportReport report =
        importVideo(files, source, destination, progress, [&control] { control.report(); });
    const bool isIn =
        report.result == ImportResult::copied || report.result == ImportResult::sameFile;
    if (isIn) {
        report.probe = theora::probeClip(destination, files);
    }
    return report;
}

} // namespace

BackgroundImport::BackgroundImport(platform::EventLoop& loop, platform::FileSystem& files)
    : m_files(files), m_job(loop) {}

BackgroundImport::~BackgroundImport() {
    cancel();
}

void BackgroundImport::start(const std::string& source, const std::string& destination,
                             std::function<void()> onProgress,
                             std::function<void(const ImportReport&)> onDone) {
    m_progress = std::make_shared<ImportProgress>();
    // The report if memory or threads run out: only the temporary file was touched, and it has been
    // removed again.
    const auto report = std::make_shared<ImportReport>(
        ImportReport{ImportResult::failed, core::trStored("out of memory"_tr)});
    m_job.start(
        [progress = m_progress, report, source, destination, &files = m_files](auto& control) {
            *report = importAndProbe(files, source, destination, *progress, control);
        },
        std::move(onProgress), [report, done = std::move(onDone)](bool) { done(*report); });
}

void BackgroundImport::cancel() {
    m_progress->cancelled = true;
    m_job.cancel();
}

} // namespace jobs
