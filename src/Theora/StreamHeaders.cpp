#include "src/Theora/StreamHeaders.h"

#include <cstddef>
#include <optional>
#include <string_view>

#include "src/Theora/PageReader.h"
#include "src/TheoraException.h"

namespace theora {
namespace {

constexpr int kHeaderCount = 3;
// Headers of real files end within a few hundred kilobytes; give up after that.
constexpr std::int64_t kHeaderSearchLimit = std::int64_t{8} << 20U;
// A picture needs several bytes per pixel in decoder and queue: a small file must not claim
// gigabytes.
constexpr std::uint32_t kMaxSide = 16384;
constexpr std::uint64_t kMaxPixels = std::uint64_t{36} << 20U;

enum Line {
    kNoData = 101,
    kNoTheora = 117,
    kBadTheora = 139,
    kDataTooEarly = 151,
    kBadVorbis = 171
};

constexpr std::string_view kTheoraMagic = "\x80theora";
constexpr std::string_view kVorbisMagic = "\x01vorbis";

bool startsWith(const unsigned char* bytes, long count, std::string_view tag) {
    return std::string_view(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count))
        .starts_with(tag);
}

bool startsWith(const ogg_packet& packet, std::string_view tag) {
    return startsWith(packet.packet, packet.bytes, tag);
}

class HeaderReader {
public:
    HeaderReader(SharedSource& source, StreamHeaders& headers)
        : m_pages(source, m_never), m_headers(headers) {}

    void read() {
        bool anyPage = false;
        ogg_page page;
        while (!complete() && m_pages.next(page, kHeaderSearchLimit)) {
            anyPage = true;
            // Check the serial number first: some writers flag later pages as the beginning too.
            if (m_theora && ogg_page_serialno(&page) == m_headers.theora.serial) {
                feedTheora(page);
            } else if (m_vorbis && ogg_page_serialno(&page) == m_headers.vorbis.serial) {
                feedVorbis(page);
            } else if (ogg_page_bos(&page) != 0) {
                beginStream(page);
            } else if (!m_theora) {
                break; // data pages begin, without a Theora stream so far
            }
        }
        m_headers.lacksTheora = !m_theora;
        if (!m_theora && anyPage) {
            refuseStream("invalid stream", kNoTheora);
        }
        if (!complete()) {
            refuseStream("End of file found prematurely", kNoData);
        }
    }

private:
    [[nodiscard]] bool complete() const {
        return m_theoraCount == kHeaderCount && (!m_vorbis || m_vorbisCount == kHeaderCount);
    }

    void beginStream(ogg_page& page) {
        const int serial = ogg_page_serialno(&page);
        OggStream probe(serial);
        ogg_packet packet;
        if (ogg_stream_pagein(probe.get(), &page) != 0 ||
            ogg_stream_packetout(probe.get(), &packet) != 1) {
            return;
        }
        if (!m_theora && startsWith(packet, kTheoraMagic)) {
            m_headers.theora.serial = serial;
            m_theora.emplace(serial);
            feedTheora(page);
        } else if (!m_vorbis && startsWith(packet, kVorbisMagic)) {
            m_headers.vorbis.serial = serial;
            m_headers.vorbis.present = true;
            m_vorbis.emplace(serial);
            feedVorbis(page);
        }
    }

    void feedTheora(ogg_page& page) {
        ogg_stream_pagein(m_theora->get(), &page);
        ogg_packet packet;
        while (m_theoraCount < kHeaderCount) {
            const int got = ogg_stream_packetout(m_theora->get(), &packet);
            if (got == 0) {
                return;
            }
            // A gap in page numbers: a missing header shows at the next one. A repeated first
            // header is skipped.
            if (got < 0 || (m_theoraCount > 0 && startsWith(packet, kTheoraMagic))) {
                continue;
            }
            if (!isHeaderPacket(packet)) {
                refuseStream("invalid theora stream", kDataTooEarly);
            }
            TheoraHeaders& to = m_headers.theora;
            th_setup_info* setup = to.setup.release();
            const int result = th_decode_headerin(to.info.get(), to.comment.get(), &setup, &packet);
            to.setup.reset(setup);
            if (result <= 0) {
                refuseStream(kBadTheoraHeaders, kBadTheora);
            }
            if (++m_theoraCount == 1) {
                checkSize();
            }
            m_headers.dataStart = m_pages.pageOffset();
        }
    }

    void checkSize() const {
        const th_info& info = *m_headers.theora.info.get();
        if (info.frame_width > kMaxSide || info.frame_height > kMaxSide ||
            std::uint64_t{info.frame_width} * info.frame_height > kMaxPixels ||
            info.fps_numerator == 0 || info.fps_denominator == 0) {
            refuseStream(kBadTheoraHeaders, kBadTheora);
        }
    }

    void feedVorbis(ogg_page& page) {
        ogg_stream_pagein(m_vorbis->get(), &page);
        ogg_packet packet;
        while (m_vorbisCount < kHeaderCount) {
            const int got = ogg_stream_packetout(m_vorbis->get(), &packet);
            if (got == 0) {
                return;
            }
            if (got < 0 || (m_vorbisCount > 0 && startsWith(packet, kVorbisMagic))) {
                continue;
            }
            if (vorbis_synthesis_headerin(m_headers.vorbis.info.get(),
                                          m_headers.vorbis.comment.get(), &packet) != 0) {
                refuseStream(kBadVorbisHeaders, kBadVorbis);
            }
            ++m_vorbisCount;
        }
    }

    const StopCheck m_never;
    PageReader m_pages;
    StreamHeaders& m_headers;
    std::optional<OggStream> m_theora;
    std::optional<OggStream> m_vorbis;
    int m_theoraCount = 0;
    int m_vorbisCount = 0;
};

} // namespace

void refuseStream(const char* message, int line) {
    throw TheoraGenericException(message, "src\\Theora\\TheoraVideoClip_Theora", line);
}

bool beginsTheoraStream(const ogg_page& page) {
    return ogg_page_bos(&page) != 0 && ogg_page_continued(&page) == 0 &&
           startsWith(page.body, page.body_len, kTheoraMagic);
}

void readStreamHeaders(SharedSource& source, StreamHeaders& headers) {
    HeaderReader(source, headers).read();
    if (!headers.theora.setup) {
        refuseStream(kBadTheoraHeaders, kBadTheora);
    }
}

} // namespace theora
