#include "zone/ChunkReader.h"

#include <algorithm>
#include <array>

#include "zone/ShapeRecord.h"

namespace zone {

bool ChunkReader::next() {
    std::array<std::uint8_t, kHeaderSize> header;
    if (m_left < header.size() || !read(header.data(), header.size())) {
        return false;
    }
    m_tag = loadU32(header.data());
    m_statedSize = loadU32(header.data() + 4);
    m_size = static_cast<std::size_t>(std::min<std::uint64_t>(m_statedSize, m_left));
    return true;
}

bool ChunkReader::readBody() {
    if (m_size > m_room || !m_body) {
        m_body = std::make_unique_for_overwrite<std::uint8_t[]>(m_size);
        m_room = m_size;
    }
    return read(m_body.get(), m_size);
}

void ChunkReader::skip() {
    std::array<std::uint8_t, 16384> passed;
    for (std::size_t now = 0; m_size > 0 && m_good; m_size -= now) {
        now = std::min(m_size, passed.size());
        (void)read(passed.data(), now);
    }
}

void ChunkReader::giveBackLast() {
    m_last = m_body[m_size - 1];
    m_isGivenBack = true;
    ++m_left;
}

bool ChunkReader::read(std::uint8_t* to, std::size_t count) {
    m_left -= count;
    if (m_isGivenBack && count > 0) {
        *to++ = m_last;
        --count;
        m_isGivenBack = false;
    }
    m_good = m_good && (count == 0 || m_file.read(to, count));
    return m_good;
}

} // namespace zone
