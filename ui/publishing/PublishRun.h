// One publishing, on a thread of its own: finds the converter, tells how far it is and what has
// become of it. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"
#include "publish/PublishJob.h"

namespace ui {

class PublishRun {
public:
    /// The handlers are called on the UI thread, the second one once for each start.
    PublishRun(platform::EventLoop& loop,
               std::function<void(const publish::PublishProgress&)> progressed,
               std::function<void(publish::PublishResult)> ended);
    ~PublishRun();

    /// `chosenConverter`: what the author has set, for a request that names none.
    void start(publish::PublishRequest request, std::string chosenConverter);
    void cancel() { m_job.cancel(); }

private:
    struct Shared;

    void takeProgress() const;
    void takeResult(bool isWhole) const;

    std::function<void(const publish::PublishProgress&)> m_progressed;
    std::function<void(publish::PublishResult)> m_ended;
    std::shared_ptr<Shared> m_shared;
    jobs::BackgroundJob m_job; ///< last: it uses all of the above
};

} // namespace ui
