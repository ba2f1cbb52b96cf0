#include "tools/tour/Ticker.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace tour {

namespace {

constexpr auto kHang = std::chrono::minutes(2);

} // namespace

struct Ticker::Tick {
    std::function<void()> run; ///< UI thread only; empty after the ticker's destruction
    std::atomic<bool> isPosted{false};
};

Ticker::Ticker(platform::EventLoop& loop, std::chrono::milliseconds period,
               std::function<void()> tick)
    : m_loop(loop), m_period(period), m_tick(std::make_shared<Tick>()) {
    m_tick->run = std::move(tick);
    m_thread = std::thread([this] { run(); });
}

Ticker::~Ticker() {
    {
        const std::lock_guard lock(m_mutex);
        m_stops = true;
    }
    m_wake.notify_all();
    m_thread.join();
    m_tick->run = nullptr;
}

void Ticker::run() {
    auto posted = std::chrono::steady_clock::now();
    std::unique_lock lock(m_mutex);
    while (!m_wake.wait_for(lock, m_period, [this] { return m_stops; })) {
        if (!m_tick->isPosted.exchange(true)) {
            posted = std::chrono::steady_clock::now();
            m_loop.post([tick = m_tick] {
                tick->isPosted = false;
                if (tick->run) {
                    tick->run();
                }
            });
        } else if (std::chrono::steady_clock::now() - posted > kHang) {
            std::puts("FAILED: the program hangs");
            (void)std::fflush(stdout);
            std::abort(); // leaves the stacks to look at
        }
    }
}

} // namespace tour
