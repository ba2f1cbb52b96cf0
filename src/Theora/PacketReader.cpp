#include "src/Theora/PacketReader.h"

#include <algorithm>

#include "src/Theora/StreamHeaders.h"

namespace theora {

PacketReader::PacketReader(SharedSource& source, const StopCheck& stop, const StreamLayout& layout,
                           const GranuleFormat& format)
    : m_layout(layout), m_format(format), m_pages(source, stop), m_stream(layout.serial) {
    rewind();
}

void PacketReader::start(const PagePosition& position) {
    ogg_stream_reset(m_stream.get());
    m_packets.clear();
    m_index = 0;
    m_pages.seek(position.offset);
    m_nextNumber = m_layout.firstFrame;
    if (position.isStart) {
        return;
    }
    // The page itself is read since a packet may begin at its end; the rest is skipped.
    if (loadPage()) {
        m_index = m_packets.size();
    }
    m_nextNumber = position.frame + 1;
}

const FramePacket* PacketReader::peek() {
    while (m_index >= m_packets.size()) {
        if (!loadPage()) {
            return nullptr;
        }
    }
    return &m_packets[m_index];
}

bool PacketReader::loadPage() {
    ogg_page page;
    do {
        if (!m_pages.next(page)) {
            return false;
        }
    } while (ogg_page_serialno(&page) != m_layout.serial);
    if (beginsTheoraStream(page) && m_pages.pageOffset() > m_layout.dataStart) {
        m_pages.seek(m_pages.sourceSize()); // another stream with the same serial number
        return false;
    }
    ogg_stream_pagein(m_stream.get(), &page);
    takePackets(page);
    return true;
}

void PacketReader::takePackets(ogg_page& page) {
    m_packets.clear();
    m_index = 0;
    FramePacket next;
    for (int got = 0; (got = ogg_stream_packetout(m_stream.get(), &next.packet)) != 0;) {
        if (got < 0 || isHeaderPacket(next.packet)) {
            continue; // a gap in the data, or headers before the first frame
        }
        next.isKeyframe = th_packet_iskeyframe(&next.packet) == 1;
        m_packets.push_back(next);
    }
    const auto count = static_cast<std::int64_t>(m_packets.size());
    const std::int64_t granule = ogg_page_granulepos(&page);
    std::int64_t number = m_nextNumber;
    if (granule >= 0 && count > 0) {
        number = std::max(number, m_format.frameOf(granule) - count + 1);
    }
    for (FramePacket& packet : m_packets) {
        packet.number = number++;
    }
    m_nextNumber = number;
}

} // namespace theora
