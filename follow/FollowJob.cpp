#include "follow/FollowJob.h"

#include <memory>
#include <utility>

#include "platform/ThreadAnnotations.h"
#include "src/TheoraMutex.h"

namespace follow {

/// Of the thread and the window.
struct FollowJob::Shared {
    theora::TheoraMutex mutex;
    News news GUARDED_BY(mutex);
    Outcome outcome; ///< the thread's until it has ended
};

FollowJob::FollowJob(platform::EventLoop& loop, platform::FileSystem& files)
    : m_files(files), m_job(loop) {}

FollowJob::~FollowJob() = default;

void FollowJob::start(Request request, std::function<void(const News&)> onNews,
                      std::function<void(const Outcome&)> onDone) {
    const auto shared = std::make_shared<Shared>();
    m_job.start(
        [shared, request = std::move(request), &files = m_files](auto& control) {
            shared->outcome = nothingRead(request); // until it has come to something
            shared->outcome = followZone(
                request, files, [&control] { return control.isCancelled(); },
                [&](const News& news) {
                    {
                        const theora::TheoraLock lock(shared->mutex);
                        shared->news = news;
                    }
                    control.report();
                });
        },
        [shared, onNews = std::move(onNews)] {
            News news;
            {
                const theora::TheoraLock lock(shared->mutex);
                news = shared->news;
            }
            onNews(news);
        },
        [shared, onDone = std::move(onDone)](bool /*isWhole*/) { onDone(shared->outcome); });
}

} // namespace follow
