#include "src/Theora/SharedSource.h"

namespace theora {

std::size_t SharedSource::readAt(std::int64_t offset, void* buffer, std::size_t count) {
    const TheoraLock lock(m_mutex);
    if (offset < 0 || offset >= m_size) {
        return 0;
    }
    if (m_position != offset) {
        m_source.seek(offset);
    }
    m_position = -1; // until the read succeeds
    const std::size_t got = m_source.read(buffer, count);
    m_position = offset + static_cast<std::int64_t>(got);
    return got;
}

} // namespace theora
