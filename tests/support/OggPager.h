// Writes Ogg pages with a chosen layout, which no encoder offers: packets a page, segments a page
// (so that packets continue over pages), pages without packets. Used by the clip maker.
// https://www.rfc-editor.org/rfc/rfc3533
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <ogg/ogg.h>

namespace support {

using Bytes = std::vector<std::uint8_t>;

struct OggPacketData {
    Bytes bytes;
    std::int64_t granule = 0; ///< position after this packet
};

[[nodiscard]] inline OggPacketData copyPacket(const ogg_packet& packet) {
    return {Bytes(packet.packet, packet.packet + packet.bytes), packet.granulepos};
}

/// What an encoder gives.
struct EncodedStream {
    std::vector<OggPacketData> headers;
    std::vector<OggPacketData> data;
};

/// One page, ready to be written, and the granule position of the last packet that ends on it.
struct OggPageData {
    Bytes bytes;
    std::int64_t granule = -1;
    std::size_t packets = 0; ///< that end on it
};

struct PageLayout {
    std::size_t packetsPerPage = 1;    ///< a page ends after so many
    std::size_t segmentsPerPage = 255; ///< and at the latest after so many pieces of 255 bytes
    /// A page that ends no packet says the position of the page before, as old encoders write it,
    /// instead of none.
    bool repeatsGranule = false;
    bool repeatsBegin = false; ///< every page is marked as the stream's beginning
};

/// Turns the packets of one stream into pages; serial numbers and page counts run on between calls.
class OggPager {
public:
    explicit OggPager(int serial) : m_serial(serial) {}

    /// All packets, the first page marked as the stream's beginning if it is its first at all.
    [[nodiscard]] std::vector<OggPageData> pages(const std::vector<OggPacketData>& packets,
                                                 const PageLayout& layout);
    /// A page that ends the stream and holds nothing. granule: -1 = none.
    [[nodiscard]] OggPageData lastEmptyPage(std::int64_t granule);
    /// Leaves out page numbers, as a recording with a gap does.
    void skipPageNumbers(int count) { m_pageNumber += static_cast<std::uint32_t>(count); }

private:
    [[nodiscard]] OggPageData finish(const Bytes& lacing, const Bytes& body, bool continued,
                                     bool first, bool last);

    int m_serial;
    std::uint32_t m_pageNumber = 0;
    std::int64_t m_granule = -1;
    std::int64_t m_lastGranule = -1; ///< of the page before
    std::size_t m_packets = 0;
};

} // namespace support
