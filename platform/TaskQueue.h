// What other threads want done by the UI thread, in order. The system is asked for one call of
// runWaiting() at a time, however many tasks wait, and for another one before a task runs that has
// others behind it: the task may start a loop of its own, which then has to run those.
#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <utility>

namespace platform {

class TaskQueue {
public:
    /// `wake` has the UI thread call runWaiting() once; false when the system refuses for now. It
    /// is called on any thread, one at a time, and must not call back.
    explicit TaskQueue(std::function<bool()> wake) : m_wake(std::move(wake)) {}

    /// Any thread. Throws, with nothing added, when there is no memory.
    void add(std::function<void()> task);
    /// UI thread only.
    void runWaiting() noexcept;

private:
    /// The first one, which is empty when none is left; asks for another call when it has others
    /// behind it.
    std::function<void()> take() noexcept;
    /// With m_mutex held. Where it was refused, the next task that is added asks again.
    void wake();

    const std::function<bool()> m_wake;
    std::mutex m_mutex; ///< guards what follows
    std::deque<std::function<void()>> m_tasks;
    bool m_isWoken = false;
};

} // namespace platform
