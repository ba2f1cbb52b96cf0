#include "bench/PlaybackFloor.h"

#include <cstring>
#include <stdexcept>

namespace bench {
namespace {

constexpr long kChunk = 65536;

} // namespace

PlaybackFloor::PlaybackFloor(const std::string& path) : m_file(std::fopen(path.c_str(), "rb")) {
    if (!m_file) {
        throw std::runtime_error("cannot open " + path);
    }
    ogg_sync_init(&m_sync);
    th_info_init(&m_info);
    readHeaders();
    buildIndex();
    m_decoder = th_decode_alloc(&m_info, m_setup);
    if (m_decoder == nullptr) {
        throw std::runtime_error("no decoder for " + path);
    }
    startAt(m_dataStart);
}

PlaybackFloor::~PlaybackFloor() {
    th_decode_free(m_decoder);
    th_setup_free(m_setup);
    th_info_clear(&m_info);
    if (m_haveStream) {
        ogg_stream_clear(&m_stream);
    }
    ogg_sync_clear(&m_sync);
}

bool PlaybackFloor::readPage(ogg_page& page) {
    for (;;) {
        const long bytes = ogg_sync_pageseek(&m_sync, &page);
        if (bytes > 0) {
            m_pageStart = m_pageEnd;
            m_pageEnd += bytes;
            return true;
        }
        if (bytes < 0) {
            m_pageEnd -= bytes;
            continue;
        }
        char* buffer = ogg_sync_buffer(&m_sync, kChunk);
        const auto got = static_cast<long>(std::fread(buffer, 1, kChunk, m_file.get()));
        if (got == 0) {
            return false;
        }
        ogg_sync_wrote(&m_sync, got);
    }
}

bool PlaybackFloor::readPacket(ogg_packet& packet) {
    for (;;) {
        const int got = ogg_stream_packetout(&m_stream, &packet);
        if (got > 0 && (packet.bytes == 0 || (packet.packet[0] & 0x80) == 0)) {
            return true;
        }
        if (got != 0) {
            continue;
        }
        ogg_page page;
        do {
            if (!readPage(page)) {
                return false;
            }
        } while (ogg_page_serialno(&page) != m_stream.serialno);
        ogg_stream_pagein(&m_stream, &page);
    }
}

void PlaybackFloor::startAt(long offset) {
    std::fseek(m_file.get(), offset, SEEK_SET);
    ogg_sync_reset(&m_sync);
    ogg_stream_reset(&m_stream);
    m_pageStart = m_pageEnd = offset;
}

void PlaybackFloor::readHeaders() {
    th_comment comment;
    th_comment_init(&comment);
    ogg_page page;
    int headers = 0;
    while (headers < 3 && readPage(page)) {
        if (!m_haveStream && page.body_len > 7 && std::memcmp(page.body, "\x80theora", 7) == 0) {
            ogg_stream_init(&m_stream, ogg_page_serialno(&page));
            m_haveStream = true;
        }
        if (!m_haveStream || ogg_page_serialno(&page) != m_stream.serialno) {
            continue;
        }
        ogg_stream_pagein(&m_stream, &page);
        ogg_packet packet;
        while (headers < 3 && ogg_stream_packetout(&m_stream, &packet) > 0) {
            headers += th_decode_headerin(&m_info, &comment, &m_setup, &packet) > 0 ? 1 : 3;
        }
    }
    th_comment_clear(&comment);
    if (headers != 3) {
        throw std::runtime_error("no Theora headers");
    }
    m_dataStart = m_pageStart;
}

void PlaybackFloor::buildIndex() {
    startAt(m_dataStart);
    long lastPage = m_dataStart;
    int lastPageEnds = 0;
    int keyframe = 0;
    Entry key;
    ogg_page page;
    while (readPage(page)) {
        if (ogg_page_serialno(&page) != m_stream.serialno) {
            continue;
        }
        ogg_stream_pagein(&m_stream, &page);
        ogg_packet packet;
        bool ended = false;
        while (ogg_stream_packetout(&m_stream, &packet) > 0) {
            if (packet.bytes > 0 && (packet.packet[0] & 0x80) != 0) {
                continue;
            }
            const int frame = frameCount();
            if (th_packet_iskeyframe(&packet) == 1) {
                keyframe = frame;
                key = {lastPage, lastPageEnds, keyframe};
            }
            m_index.push_back(frame == 0 ? Entry{m_dataStart, 0, 0} : key);
            ended = true;
        }
        if (ended) {
            lastPage = m_pageStart;
            lastPageEnds = frameCount();
        }
    }
}

void PlaybackFloor::seek(int frame) {
    const Entry& entry = m_index[static_cast<std::size_t>(frame)];
    startAt(entry.page);
    ogg_packet packet;
    int at = entry.pageEnds;
    if (entry.pageEnds > 0) { // skip what ends on that page
        ogg_page page;
        do {
            if (!readPage(page)) {
                return;
            }
        } while (ogg_page_serialno(&page) != m_stream.serialno);
        ogg_stream_pagein(&m_stream, &page);
        while (ogg_stream_packetout(&m_stream, &packet) != 0) {
        }
    }
    for (; at < entry.keyframe; ++at) {
        if (!readPacket(packet)) {
            return;
        }
    }
    for (; at <= frame; ++at) {
        if (!next()) {
            return;
        }
    }
}

bool PlaybackFloor::next() {
    ogg_packet packet;
    if (!readPacket(packet)) {
        return false;
    }
    m_repeatedFrames += th_decode_packetin(m_decoder, &packet, nullptr) == TH_DUPFRAME ? 1 : 0;
    th_ycbcr_buffer picture;
    th_decode_ycbcr_out(m_decoder, picture);
    return true;
}

} // namespace bench
