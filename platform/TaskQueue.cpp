#include "platform/TaskQueue.h"

#include <cstddef>
#include <exception>
#include <utility>

#include "platform/Guard.h"

namespace platform {

void TaskQueue::add(std::function<void()> task) {
    const std::lock_guard lock(m_mutex);
    m_tasks.push_back(std::move(task));
    try {
        wake();
    } catch (...) {
        m_tasks.pop_back();
        throw;
    }
}

void TaskQueue::runWaiting() noexcept {
    std::size_t left = 0;
    {
        const std::lock_guard lock(m_mutex);
        m_isWoken = false;
        left = m_tasks.size();
    }
    // No more than waited at the start: tasks that add tasks must not hold up input and painting.
    while (left-- > 0) {
        if (const std::function<void()> task = take()) {
            guardedRun("posted task", task);
        }
    }
}

std::function<void()> TaskQueue::take() noexcept {
    const std::lock_guard lock(m_mutex);
    if (m_tasks.empty()) {
        return {};
    }
    std::function<void()> task = std::move(m_tasks.front());
    m_tasks.pop_front();
    if (!m_tasks.empty()) {
        try {
            wake();
        } catch (const std::exception&) {
            // Refused for want of memory: the caller goes on with the rest.
        }
    }
    return task;
}

void TaskQueue::wake() {
    if (!m_isWoken) {
        m_isWoken = m_wake();
    }
}

} // namespace platform
