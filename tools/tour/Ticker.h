// Calls a function regularly in the message loops of a running program, whichever is innermost.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/EventLoop.h"

namespace tour {

/// Runs `tick` in `loop` every `period`, one at a time, so that input, timers and paints get their
/// turn. A loop that runs none for two minutes ends the process with a message. Created and
/// destroyed on the UI thread; no tick runs after destruction.
class Ticker {
public:
    Ticker(platform::EventLoop& loop, std::chrono::milliseconds period, std::function<void()> tick);
    ~Ticker();
    Ticker(const Ticker&) = delete;
    Ticker& operator=(const Ticker&) = delete;

private:
    struct Tick;
    void run();

    platform::EventLoop& m_loop;
    std::chrono::milliseconds m_period;
    /// Shared with a tick still posted at destruction: the loop may run it much later.
    std::shared_ptr<Tick> m_tick;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_stops = false;
    std::thread m_thread;
};

} // namespace tour
