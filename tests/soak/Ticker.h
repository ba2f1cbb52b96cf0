// Lets something happen in the message loops of a running program, whichever is the innermost.
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/EventLoop.h"

namespace soak {

/// Posts ticks into `loop` from a thread of its own, one at a time, so that timers and paints have
/// their turn. A loop that takes none for two minutes ends the process with a message.
class Ticker {
public:
    Ticker(platform::EventLoop& loop, std::function<void()> tick);
    ~Ticker();
    Ticker(const Ticker&) = delete;
    Ticker& operator=(const Ticker&) = delete;

private:
    void run();

    platform::EventLoop& m_loop;
    std::function<void()> m_tick;
    std::atomic<bool> m_waits{false};
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_stops = false;
    std::thread m_thread;
};

} // namespace soak
