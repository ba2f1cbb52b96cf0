// Makes the stills of clips on a thread, one after another, and keeps what has been made. A window
// has a StillClient, which says what it shows; what nobody shows any more is not made. UI thread
// only.
//
//   StillClient client(service, [this](const StillRequest& request) { repaint(request.path); });
//   client.want({{path, size}, ...});             // what is visible, the most urgent first
//   if (StillPtr still = client.find({path, size})) { ... }
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "stills/Still.h"
#include "stills/StillFiles.h"

namespace stills {

class StillClient;
struct StillQueue;
struct StillTask;

struct StillLimits {
    std::size_t memoryBytes = std::size_t{64} << 20U;
    std::uint64_t diskBytes = std::uint64_t{128} << 20U;
    /// A clip that takes longer gets no picture.
    std::chrono::milliseconds timeOfOne{2000};
};

class StillService {
public:
    /// `cacheFolder` ends in a separator; empty to keep nothing on the disk. The others outlive the
    /// service, which outlives its clients.
    StillService(platform::EventLoop& loop, platform::FileSystem& files, std::string cacheFolder,
                 const StillLimits& limits = {});
    /// Stops what is being made.
    ~StillService();
    StillService(const StillService&) = delete;
    StillService& operator=(const StillService&) = delete;

    /// Of all stills that are kept in memory.
    [[nodiscard]] std::size_t memoryBytes() const { return m_memoryBytes; }

private:
    friend class StillClient;
    struct Kept {
        StillPtr still;
        std::uint64_t lastUse = 0;
    };

    [[nodiscard]] StillPtr find(const StillRequest& request);
    void add(StillClient& client);
    void remove(StillClient& client);
    /// After a client's wishes have changed.
    void plan();
    [[nodiscard]] std::deque<StillTask> openTasks(std::set<StillRequest> excluded);
    void work();
    void takeResults();
    void keep(const StillRequest& request, const StillPtr& still);

    platform::FileSystem& m_files;
    StillLimits m_limits;
    std::vector<StillClient*> m_clients; ///< the newest last
    std::map<StillRequest, Kept> m_kept;
    std::size_t m_memoryBytes = 0;
    std::uint64_t m_uses = 0;
    std::shared_ptr<StillQueue> m_queue;
    std::shared_ptr<StillFiles> m_cache; ///< the working thread's
    jobs::BackgroundJob m_job;           ///< last: it uses all of the above
};

class StillClient {
public:
    /// `arrived` is called whenever find() has something new to say about a request.
    StillClient(StillService& service, std::function<void(const StillRequest&)> arrived);
    /// Drops what it asked for.
    ~StillClient();
    StillClient(const StillClient&) = delete;
    StillClient& operator=(const StillClient&) = delete;

    /// Replaces what was asked for. A still that is known already is made again only if its file
    /// has changed, which is looked up once for each time that it comes to be wanted.
    void want(std::vector<StillRequest> requests);
    /// Null while nothing is known about it.
    [[nodiscard]] StillPtr find(const StillRequest& request) { return m_service.find(request); }

private:
    friend class StillService;
    /// Whether it was still waiting for this.
    bool answer(const StillRequest& request);

    StillService& m_service;
    std::function<void(const StillRequest&)> m_arrived;
    std::vector<StillRequest> m_wishes;
    std::set<StillRequest> m_answered; ///< of the wishes
};

} // namespace stills
