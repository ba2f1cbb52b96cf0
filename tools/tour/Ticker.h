// Lets something happen in the message loops of a running program, whichever is the innermost.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/EventLoop.h"

namespace tour {

/// Has `tick` run in `loop` every `period`, one at a time, so that input, timers and paints have
/// their turn in between. A loop that takes none for two minutes ends the process with a message.
/// Made and destroyed on the UI thread; after that no tick runs.
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
    /// Shared with the tick that is still posted at the end: the loop may run it much later.
    std::shared_ptr<Tick> m_tick;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_stops = false;
    std::thread m_thread;
};

} // namespace tour
