// The UI thread's loop without a window: runs only what is posted.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <new>
#include <utility>

#include "platform/EventLoop.h"

namespace support {

class TaskLoop final : public platform::EventLoop {
public:
    int run() override { return 0; }
    void postQuit(int /*code*/) override {}
    void processEvents(bool wait) override {
        if (wait) {
            waitForTask();
        }
        while (runNext()) {
        }
    }
    void waitForTask() {
        std::unique_lock lock(m_mutex);
        m_posted.wait(lock, [&] { return !m_tasks.empty(); });
    }
    /// Runs one task; false if there is none.
    bool runNext() {
        std::unique_lock lock(m_mutex);
        if (m_tasks.empty()) {
            return false;
        }
        const std::function<void()> task = std::move(m_tasks.front());
        m_tasks.pop_front();
        lock.unlock();
        task();
        return true;
    }
    void post(std::function<void()> task) override {
        const std::scoped_lock lock(m_mutex);
        if (failures > 0) {
            --failures;
            throw std::bad_alloc();
        }
        m_tasks.push_back(std::move(task));
        m_posted.notify_one();
    }

    int failures = 0; ///< how many tasks find no memory; set while no other thread posts

private:
    std::mutex m_mutex;
    std::condition_variable m_posted;
    std::deque<std::function<void()>> m_tasks;
};

} // namespace support
