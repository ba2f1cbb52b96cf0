// Wakes idle workers: a seek, a released frame or a stop raises it, and a worker that found nothing
// to do waits for it. A raise between looking for work and waiting is never lost.
#pragma once

#include <chrono>
#include <cstdint>

#include "src/TheoraMutex.h"

namespace theora {

/// Any thread.
class TheoraWorkSignal {
public:
    /// Read this before looking for work.
    [[nodiscard]] std::uint64_t count() const EXCLUDES(m_mutex);
    void raise() EXCLUDES(m_mutex);
    /// Returns when the count differs from `seen`, at the latest after `limit`.
    void wait(std::uint64_t seen, std::chrono::milliseconds limit) EXCLUDES(m_mutex);

private:
    mutable TheoraMutex m_mutex;
    TheoraCondition m_changed;
    std::uint64_t m_count GUARDED_BY(m_mutex) = 0;
};

} // namespace theora
