// Wakes idle workers: raised by a seek, a released frame or a stop, awaited by workers that found
// nothing to do. A raise between looking for work and waiting is never lost.
#pragma once

#include <chrono>
#include <cstdint>

#include "platform/ThreadAnnotations.h"
#include "src/TheoraMutex.h"

namespace theora {

/// Any thread.
class TheoraWorkSignal {
public:
    /// Read this before looking for work.
    [[nodiscard]] std::uint64_t count() const EXCLUDES(m_mutex);
    void raise() EXCLUDES(m_mutex);
    /// Returns when the count differs from `seen`, after `limit` at the latest.
    void wait(std::uint64_t seen, std::chrono::milliseconds limit) EXCLUDES(m_mutex);

private:
    mutable TheoraMutex m_mutex;
    TheoraCondition m_changed;
    std::uint64_t m_count GUARDED_BY(m_mutex) = 0;
};

} // namespace theora
