#include "tests/src/ReferenceDecoder.h"

#include <cmath>
#include <fstream>
#include <iterator>

#include <theora/theoradec.h>

namespace reference {
namespace {

int clampByte(int value) {
    return value < 0 ? 0 : value > 255 ? 255 : value;
}

int truncated(double value) {
    return static_cast<int>(std::trunc(value));
}

/// The colour tables written out as their definition says.
struct Tables {
    int y[256], rv[256], gu[256], gv[256], bu[256];
    Tables() {
        for (int i = 0; i < 256; ++i) {
            y[i] = truncated((i - 16) * 9535.988);
            rv[i] = truncated((i - 128) * 13074.932);
            gu[i] = truncated((i - 128) * 3203.572);
            gv[i] = truncated((i - 128) * 6660.596);
            bu[i] = truncated((i - 128) * 16531.956);
        }
    }
};

std::vector<std::uint8_t> toRgb(const th_ycbcr_buffer planes, th_pixel_fmt format) {
    static const Tables tables;
    const int shiftX = format == TH_PF_444 ? 0 : 1;
    const int shiftY = format == TH_PF_420 ? 1 : 0;
    std::vector<std::uint8_t> rgb;
    rgb.reserve(static_cast<std::size_t>(planes[0].width * planes[0].height * 3));
    const auto sample = [&](int plane, int x, int y) {
        return planes[plane].data[y * planes[plane].stride + x];
    };
    for (int y = 0; y < planes[0].height; ++y) {
        for (int x = 0; x < planes[0].width; ++x) {
            const int luma = tables.y[sample(0, x, y)];
            const int u = sample(1, x >> shiftX, y >> shiftY);
            const int v = sample(2, x >> shiftX, y >> shiftY);
            rgb.push_back(static_cast<std::uint8_t>(clampByte((luma + tables.rv[v]) >> 13)));
            rgb.push_back(
                static_cast<std::uint8_t>(clampByte((luma - (tables.gu[u] + tables.gv[v])) >> 13)));
            rgb.push_back(static_cast<std::uint8_t>(clampByte((luma + tables.bu[u]) >> 13)));
        }
    }
    return rgb;
}

/// Everything libogg and libtheora need for one pass over the file.
class Pass {
public:
    explicit Pass(const support::Bytes& file) {
        ogg_sync_init(&m_sync);
        th_info_init(&m_info);
        th_comment_init(&m_comment);
        char* buffer = ogg_sync_buffer(&m_sync, static_cast<long>(file.size()));
        std::copy(file.begin(), file.end(), buffer);
        ogg_sync_wrote(&m_sync, static_cast<long>(file.size()));
    }
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;
    ~Pass() {
        th_decode_free(m_decoder);
        th_setup_free(m_setup);
        th_comment_clear(&m_comment);
        th_info_clear(&m_info);
        if (m_haveStream) {
            ogg_stream_clear(&m_stream);
        }
        ogg_sync_clear(&m_sync);
    }

    Frames run() {
        ogg_page page;
        for (int got = 0; (got = ogg_sync_pageout(&m_sync, &page)) != 0;) {
            if (got > 0) {
                take(page);
            }
        }
        return std::move(m_frames);
    }

private:
    void take(ogg_page& page) {
        const int serial = ogg_page_serialno(&page);
        if (!m_haveStream) {
            ogg_stream_init(&m_stream, serial);
            m_haveStream = true;
            ogg_stream_pagein(&m_stream, &page);
            ogg_packet first;
            const bool isTheora = ogg_stream_packetpeek(&m_stream, &first) == 1 &&
                                  first.bytes > 7 && first.packet[0] == 0x80 &&
                                  first.packet[1] == 't';
            if (!isTheora) {
                ogg_stream_clear(&m_stream);
                m_haveStream = false;
                return;
            }
        } else if (serial == m_stream.serialno) {
            ogg_stream_pagein(&m_stream, &page);
        }
        ogg_packet packet;
        for (int got = 0; (got = ogg_stream_packetout(&m_stream, &packet)) != 0;) {
            if (got > 0) {
                take(packet);
            }
        }
    }

    void take(ogg_packet& packet) {
        if (packet.bytes > 0 && (packet.packet[0] & 0x80) != 0) {
            th_decode_headerin(&m_info, &m_comment, &m_setup, &packet);
            return;
        }
        if (m_decoder == nullptr) {
            m_decoder = th_decode_alloc(&m_info, m_setup);
            m_frames.width = static_cast<int>(m_info.frame_width);
            m_frames.height = static_cast<int>(m_info.frame_height);
        }
        th_decode_packetin(m_decoder, &packet, nullptr);
        th_ycbcr_buffer planes;
        th_decode_ycbcr_out(m_decoder, planes);
        const auto rgb = toRgb(planes, m_info.pixel_fmt);
        m_frames.hashes.push_back(hashBytes(rgb.data(), rgb.size()));
    }

    ogg_sync_state m_sync{};
    ogg_stream_state m_stream{};
    bool m_haveStream = false;
    th_info m_info{};
    th_comment m_comment{};
    th_setup_info* m_setup = nullptr;
    th_dec_ctx* m_decoder = nullptr;
    Frames m_frames;
};

} // namespace

Frames decode(const support::Bytes& file) {
    return Pass(file).run();
}

support::Bytes readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::uint64_t hashBytes(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (std::size_t i = 0; i < count; ++i) {
        hash = (hash ^ bytes[i]) * 1099511628211ULL;
    }
    return hash;
}

} // namespace reference
