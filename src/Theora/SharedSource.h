// Shares one data source between readers: every read gives its offset.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/ThreadAnnotations.h"
#include "src/TheoraDataSource.h"
#include "src/TheoraMutex.h"

namespace theora {

/// Any thread.
class SharedSource {
public:
    /// source: outlives this object; must not be used otherwise.
    explicit SharedSource(TheoraDataSource& source) : m_source(source), m_size(source.size()) {}

    /// Returns the bytes read at `offset`; 0 outside the source. Throws what the source throws.
    [[nodiscard]] std::size_t readAt(std::int64_t offset, void* buffer, std::size_t count)
        EXCLUDES(m_mutex);
    [[nodiscard]] std::int64_t size() const { return m_size; }

private:
    TheoraMutex m_mutex;
    TheoraDataSource& m_source GUARDED_BY(m_mutex);
    std::int64_t m_position GUARDED_BY(m_mutex) = -1; ///< of the source; -1 = unknown
    const std::int64_t m_size;
};

} // namespace theora
