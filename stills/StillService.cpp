#include "stills/StillService.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <optional>
#include <utility>

#include "platform/Bitmap.h"
#include "platform/Geometry.h"
#include "platform/ThreadAnnotations.h"
#include "platform/ThreadPriority.h"
#include "src/TheoraMutex.h"
#include "src/TheoraStill.h"

namespace stills {

using theora::TheoraLock;

struct StillTask {
    StillRequest request;
    StillPtr known; ///< what a changed file must differ from; null for nothing
};

/// Shared by the UI thread and the one that works.
struct StillQueue {
    struct Result {
        StillRequest request;
        StillPtr still; ///< null if what is known still holds
    };

    theora::TheoraMutex mutex;
    std::deque<StillTask> waiting GUARDED_BY(mutex);
    std::optional<StillRequest> current GUARDED_BY(mutex);
    std::vector<Result> results GUARDED_BY(mutex);
    std::atomic<bool> isCurrentDropped{false};
};

namespace {

using Clock = std::chrono::steady_clock;

/// Makes one still, or says that what is known still holds.
class Maker {
public:
    Maker(platform::FileSystem& files, StillFiles& cache, std::function<bool()> stop)
        : m_files(files), m_cache(cache), m_stop(std::move(stop)) {}

    [[nodiscard]] StillPtr make(const StillTask& task) const {
        const std::string& path = task.request.path;
        Still still;
        if (const auto info = m_files.info(path); info && !info->isFolder) {
            still.exists = true;
            still.bytes = info->size;
            still.modified = info->modified;
        }
        if (task.known && task.known->exists == still.exists && task.known->bytes == still.bytes &&
            task.known->modified == still.modified) {
            return nullptr;
        }
        if (still.exists && !m_cache.read(path, still)) {
            theora::ClipStill clip = theora::readClipStill(path, m_files, kLargestBox, m_stop);
            still.frame = clip.frame;
            still.seconds = clip.seconds;
            still.picture = std::move(clip.picture);
            if (!still.picture.isEmpty()) {
                m_cache.write(path, still);
            }
        }
        still.picture = theora::reduced(still.picture, task.request.box);
        return std::make_shared<const Still>(std::move(still));
    }

private:
    platform::FileSystem& m_files;
    StillFiles& m_cache;
    std::function<bool()> m_stop;
};

std::optional<StillTask> takeNext(StillQueue& queue) {
    const TheoraLock lock(queue.mutex);
    queue.current.reset();
    if (queue.waiting.empty()) {
        return std::nullopt;
    }
    StillTask task = std::move(queue.waiting.front());
    queue.waiting.pop_front();
    queue.current = task.request;
    queue.isCurrentDropped = false;
    return task;
}

void deliver(StillQueue& queue, const StillRequest& request, StillPtr still) {
    const TheoraLock lock(queue.mutex);
    if (!queue.isCurrentDropped) {
        queue.results.push_back({request, std::move(still)});
    }
}

/// What is known of a file that there is no memory for.
StillPtr failure() {
    return std::make_shared<const Still>();
}

void makeAll(StillQueue& queue, platform::FileSystem& files, StillFiles& cache,
             std::chrono::milliseconds timeOfOne, jobs::BackgroundJob::Control& control) {
    platform::lowerThreadPriority();
    while (const auto task = control.isCancelled() ? std::nullopt : takeNext(queue)) {
        const Clock::time_point end = Clock::now() + timeOfOne;
        const Maker maker(files, cache, [&] {
            return control.isCancelled() || queue.isCurrentDropped || Clock::now() >= end;
        });
        StillPtr still;
        try {
            still = maker.make(*task);
        } catch (const std::bad_alloc&) {
            still = failure();
        }
        deliver(queue, task->request, std::move(still));
        control.report();
    }
}

} // namespace

StillService::StillService(platform::EventLoop& loop, platform::FileSystem& files,
                           std::string cacheFolder, const StillLimits& limits)
    : m_files(files), m_limits(limits), m_queue(std::make_shared<StillQueue>()),
      m_cache(std::make_shared<StillFiles>(files, std::move(cacheFolder), limits.diskBytes)),
      m_job(loop) {}

StillService::~StillService() = default;

StillPtr StillService::find(const StillRequest& request) {
    const auto kept = m_kept.find(request);
    if (kept == m_kept.end()) {
        return nullptr;
    }
    kept->second.lastUse = ++m_uses;
    return kept->second.still;
}

void StillService::add(StillClient& client) {
    m_clients.push_back(&client);
}

void StillService::remove(StillClient& client) {
    std::erase(m_clients, &client);
    plan();
}

std::deque<StillTask> StillService::openTasks(std::set<StillRequest> excluded) {
    std::deque<StillTask> tasks;
    for (auto client = m_clients.rbegin(); client != m_clients.rend(); ++client) {
        for (const StillRequest& wish : (*client)->m_wishes) {
            if (!(*client)->m_answered.contains(wish) && excluded.insert(wish).second) {
                tasks.push_back({wish, find(wish)});
            }
        }
    }
    return tasks;
}

void StillService::plan() {
    {
        const TheoraLock lock(m_queue->mutex);
        std::set<StillRequest> done;
        for (const StillQueue::Result& result : m_queue->results) {
            done.insert(result.request);
        }
        m_queue->waiting = openTasks(std::move(done));
        if (m_queue->current && !m_queue->isCurrentDropped) {
            const StillRequest current = *m_queue->current;
            m_queue->isCurrentDropped = std::erase_if(m_queue->waiting, [&](const auto& task) {
                                            return task.request == current;
                                        }) == 0;
        }
    }
    work();
}

void StillService::work() {
    {
        const TheoraLock lock(m_queue->mutex);
        if (m_job.isRunning() || m_queue->waiting.empty()) {
            return;
        }
    }
    m_job.start(
        [queue = m_queue, cache = m_cache, &files = m_files, timeOfOne = m_limits.timeOfOne](
            auto& control) { makeAll(*queue, files, *cache, timeOfOne, control); },
        [this] { takeResults(); },
        [this](bool isWhole) {
            takeResults();
            if (isWhole) { // else there is no memory or no thread: the next wish tries again
                work();
            }
        });
}

void StillService::takeResults() {
    std::vector<StillQueue::Result> results;
    {
        const TheoraLock lock(m_queue->mutex);
        results.swap(m_queue->results);
    }
    std::vector<std::pair<StillClient*, StillRequest>> news;
    for (const auto& [request, still] : results) {
        if (still) {
            keep(request, still);
        }
        for (StillClient* client : m_clients) {
            if (client->answer(request) && still) {
                news.emplace_back(client, request);
            }
        }
    }
    for (const auto& [client, request] : news) {
        // The one before may have removed it.
        if (std::find(m_clients.begin(), m_clients.end(), client) != m_clients.end()) {
            client->m_arrived(request);
        }
    }
}

void StillService::keep(const StillRequest& request, const StillPtr& still) {
    const auto bytesOf = [](const Kept& kept) {
        const platform::Size size = kept.still->picture.size();
        return sizeof(Still) +
               4 * static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    };
    Kept& place = m_kept[request];
    if (place.still) {
        m_memoryBytes -= bytesOf(place);
    }
    place = {still, ++m_uses};
    m_memoryBytes += bytesOf(place);
    while (m_memoryBytes > m_limits.memoryBytes && m_kept.size() > 1) {
        const auto oldest =
            std::min_element(m_kept.begin(), m_kept.end(), [](const auto& a, const auto& b) {
                return a.second.lastUse < b.second.lastUse;
            });
        m_memoryBytes -= bytesOf(oldest->second);
        m_kept.erase(oldest);
    }
}

StillClient::StillClient(StillService& service, std::function<void(const StillRequest&)> arrived)
    : m_service(service), m_arrived(std::move(arrived)) {
    m_service.add(*this);
}

StillClient::~StillClient() {
    m_service.remove(*this);
}

void StillClient::want(std::vector<StillRequest> requests) {
    m_wishes = std::move(requests);
    const std::set<StillRequest> wished(m_wishes.begin(), m_wishes.end());
    std::erase_if(m_answered, [&](const StillRequest& old) { return !wished.contains(old); });
    m_service.plan();
}

bool StillClient::answer(const StillRequest& request) {
    return std::find(m_wishes.begin(), m_wishes.end(), request) != m_wishes.end() &&
           m_answered.insert(request).second;
}

} // namespace stills
