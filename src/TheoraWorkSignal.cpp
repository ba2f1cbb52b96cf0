#include "src/TheoraWorkSignal.h"

#include <condition_variable>

namespace theora {

std::uint64_t TheoraWorkSignal::count() const {
    const TheoraLock lock(m_mutex);
    return m_count;
}

void TheoraWorkSignal::raise() {
    {
        const TheoraLock lock(m_mutex);
        ++m_count;
    }
    m_changed.notify_all();
}

void TheoraWorkSignal::wait(std::uint64_t seen, std::chrono::milliseconds limit) {
    const auto until = std::chrono::steady_clock::now() + limit;
    const TheoraLock lock(m_mutex);
    while (m_count == seen) {
        if (m_changed.wait_until(m_mutex, until) == std::cv_status::timeout) {
            return;
        }
    }
}

} // namespace theora
