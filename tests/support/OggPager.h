// Writes Ogg pages with a given layout, which encoders do not offer: packets per page, segments per
// page (so that packets span pages), pages without packets. Used by the clip maker.
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

/// Output of an encoder.
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
    std::size_t packetsPerPage = 1;    ///< maximum
    std::size_t segmentsPerPage = 255; ///< maximum, of 255 bytes each
    /// A page that ends no packet repeats the last position, as old encoders do, instead of none.
    bool repeatsGranule = false;
    bool repeatsBegin = false; ///< every page is marked as the stream's beginning
};

/// Turns the packets of one stream into pages; page numbers continue across calls.
class OggPager {
public:
    explicit OggPager(int serial) : m_serial(serial) {}

    /// All packets; the very first page is marked as the stream's beginning.
    [[nodiscard]] std::vector<OggPageData> pages(const std::vector<OggPacketData>& packets,
                                                 const PageLayout& layout);
    /// An empty page that ends the stream. granule: -1 = none.
    [[nodiscard]] OggPageData lastEmptyPage(std::int64_t granule);
    /// Skips page numbers, as in a recording with a gap.
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
