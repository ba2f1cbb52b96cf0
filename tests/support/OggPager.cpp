#include "tests/support/OggPager.h"

#include <algorithm>
#include <utility>

namespace support {
namespace {

constexpr std::size_t kSegment = 255;

void appendLittleEndian(Bytes& to, std::uint64_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        to.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
}

} // namespace

OggPageData OggPager::finish(const Bytes& lacing, const Bytes& body, bool continued, bool first,
                             bool last) {
    OggPageData page;
    page.granule = m_granule;
    page.packets = m_packets;
    Bytes header = {'O', 'g', 'g', 'S', 0};
    header.push_back(
        static_cast<std::uint8_t>((continued ? 1U : 0U) | (first ? 2U : 0U) | (last ? 4U : 0U)));
    appendLittleEndian(header, static_cast<std::uint64_t>(m_granule), 8);
    appendLittleEndian(header, static_cast<std::uint32_t>(m_serial), 4);
    appendLittleEndian(header, m_pageNumber++, 4);
    appendLittleEndian(header, 0, 4);
    header.push_back(static_cast<std::uint8_t>(lacing.size()));
    header.insert(header.end(), lacing.begin(), lacing.end());
    Bytes content = body;
    ogg_page raw{header.data(), static_cast<long>(header.size()), content.data(),
                 static_cast<long>(content.size())};
    ogg_page_checksum_set(&raw);
    page.bytes = std::move(header);
    page.bytes.insert(page.bytes.end(), content.begin(), content.end());
    m_lastGranule = m_granule;
    m_granule = -1;
    m_packets = 0;
    return page;
}

std::vector<OggPageData> OggPager::pages(const std::vector<OggPacketData>& packets,
                                         const PageLayout& layout) {
    std::vector<OggPageData> result;
    Bytes lacing;
    Bytes body;
    bool continued = false;
    const auto flush = [&](bool nextContinues) {
        if (m_packets == 0 && layout.repeatsGranule) {
            m_granule = m_lastGranule;
        }
        result.push_back(
            finish(lacing, body, continued, m_pageNumber == 0 || layout.repeatsBegin, false));
        lacing.clear();
        body.clear();
        continued = nextContinues;
    };
    for (const OggPacketData& packet : packets) {
        std::size_t at = 0;
        for (bool ended = false; !ended;) {
            const std::size_t piece = std::min(kSegment, packet.bytes.size() - at);
            const auto from = packet.bytes.begin() + static_cast<std::ptrdiff_t>(at);
            body.insert(body.end(), from, from + static_cast<std::ptrdiff_t>(piece));
            lacing.push_back(static_cast<std::uint8_t>(piece));
            at += piece;
            ended = piece < kSegment;
            if (!ended && lacing.size() >= layout.segmentsPerPage) {
                flush(true);
            }
        }
        m_granule = packet.granule;
        if (++m_packets >= layout.packetsPerPage || lacing.size() >= layout.segmentsPerPage) {
            flush(false);
        }
    }
    if (!lacing.empty()) {
        flush(false);
    }
    return result;
}

OggPageData OggPager::lastEmptyPage(std::int64_t granule) {
    m_granule = granule;
    return finish({}, {}, false, false, true);
}

} // namespace support
