#include "ui/publishing/PublishRun.h"

#include <utility>

#include "import/Converter.h"
#include "platform/FileSystem.h"
#include "platform/ThreadAnnotations.h"
#include "publish/PublishFolder.h"
#include "src/TheoraMutex.h"

namespace ui {

using publish::PublishProgress;
using publish::PublishResult;

/// With the thread that publishes.
struct PublishRun::Shared {
    theora::TheoraMutex mutex;
    PublishProgress progress GUARDED_BY(mutex);
    PublishResult result; ///< the thread's until it ends
};

PublishRun::PublishRun(platform::EventLoop& loop,
                       std::function<void(const PublishProgress&)> progressed,
                       std::function<void(PublishResult)> ended)
    : m_progressed(std::move(progressed)), m_ended(std::move(ended)), m_job(loop) {}

PublishRun::~PublishRun() = default;

void PublishRun::start(publish::PublishRequest request, std::string chosenConverter) {
    m_shared = std::make_shared<Shared>();
    m_job.start(
        [shared = m_shared, request = std::move(request),
         chosen = std::move(chosenConverter)](auto& control) mutable {
            platform::FileSystem& files = platform::nativeFileSystem();
            if (!request.converter.isFound()) {
                request.converter =
                    imports::findConverter(files, imports::usualPlaces(files, chosen));
            }
            shared->result = publish::publishScene(
                files, request,
                [&](const PublishProgress& progress) {
                    {
                        const theora::TheoraLock lock(shared->mutex);
                        shared->progress = progress;
                    }
                    control.report();
                },
                [&] { return control.isCancelled(); });
        },
        [this] { takeProgress(); }, [this](bool isWhole) { takeResult(isWhole); });
}

void PublishRun::takeProgress() const {
    PublishProgress progress;
    {
        const theora::TheoraLock lock(m_shared->mutex);
        progress = m_shared->progress;
    }
    if (progress.count > 0) {
        m_progressed(progress);
    }
}

void PublishRun::takeResult(bool isWhole) const {
    PublishResult outOfMemory;
    outOfMemory.failure = publish::PublishFailure::noMemory;
    m_ended(isWhole ? std::move(m_shared->result) : outOfMemory);
}

} // namespace ui
