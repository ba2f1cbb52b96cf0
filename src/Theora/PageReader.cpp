#include "src/Theora/PageReader.h"

#include <cstddef>
#include <new>

namespace theora {
namespace {

constexpr long kChunk = 16384;

} // namespace

void PageReader::seek(std::int64_t offset) {
    ogg_sync_reset(m_sync.get());
    m_readOffset = m_offset = m_pageOffset = offset;
}

bool PageReader::next(ogg_page& page, std::int64_t limit) {
    for (;;) {
        const long skipped = ogg_sync_pageseek(m_sync.get(), &page);
        if (skipped > 0) {
            m_pageOffset = m_offset;
            m_offset += skipped;
            return m_pageOffset < limit;
        }
        if (skipped < 0) { // bytes outside any page
            m_offset -= skipped;
            continue;
        }
        if (m_offset >= limit || stopped()) {
            return false;
        }
        char* buffer = ogg_sync_buffer(m_sync.get(), kChunk);
        if (buffer == nullptr) {
            throw std::bad_alloc();
        }
        const std::size_t got =
            m_source.readAt(m_readOffset, buffer, static_cast<std::size_t>(kChunk));
        ogg_sync_wrote(m_sync.get(), static_cast<long>(got));
        if (got == 0) {
            return false;
        }
        m_readOffset += static_cast<std::int64_t>(got);
    }
}

} // namespace theora
