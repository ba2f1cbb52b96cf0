#include "tests/soak/Ticker.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace soak {
namespace {

constexpr auto kTick = std::chrono::milliseconds(1);
constexpr auto kHang = std::chrono::minutes(2);

} // namespace

Ticker::Ticker(platform::EventLoop& loop, std::function<void()> tick)
    : m_loop(loop), m_tick(std::move(tick)), m_thread([this] { run(); }) {}

Ticker::~Ticker() {
    {
        const std::lock_guard lock(m_mutex);
        m_stops = true;
    }
    m_wake.notify_all();
    m_thread.join();
    m_loop.processEvents(false); // the last tick belongs to this object
}

void Ticker::run() {
    auto posted = std::chrono::steady_clock::now();
    std::unique_lock lock(m_mutex);
    while (!m_wake.wait_for(lock, kTick, [this] { return m_stops; })) {
        if (!m_waits.exchange(true)) {
            posted = std::chrono::steady_clock::now();
            m_loop.post([this] {
                m_waits = false;
                m_tick();
            });
        } else if (std::chrono::steady_clock::now() - posted > kHang) {
            std::puts("FAILED: the program hangs");
            (void)std::fflush(stdout);
            std::abort(); // leaves the stacks to look at
        }
    }
}

} // namespace soak
