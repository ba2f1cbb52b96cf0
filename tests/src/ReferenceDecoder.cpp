#include "tests/src/ReferenceDecoder.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

#include "src/Theora/OggHandles.h"

namespace reference {
namespace {

int scaled(int sample, int zero, double factor) {
    return static_cast<int>(std::trunc((sample - zero) * factor));
}

std::uint8_t colorOf(int sum) {
    return static_cast<std::uint8_t>(std::clamp(sum >> 13, 0, 255));
}

std::uint64_t hashOf(const th_ycbcr_buffer planes) {
    const int shiftX = planes[1].width < planes[0].width ? 1 : 0;
    const int shiftY = planes[1].height < planes[0].height ? 1 : 0;
    support::Bytes rgb;
    const auto sample = [&](int plane, int x, int y) {
        return planes[plane].data[y * planes[plane].stride + x];
    };
    for (int y = 0; y < planes[0].height; ++y) {
        for (int x = 0; x < planes[0].width; ++x) {
            const int luma = sample(0, x, y);
            const int u = sample(1, x >> shiftX, y >> shiftY);
            const int v = sample(2, x >> shiftX, y >> shiftY);
            rgb.insert(rgb.end(), {red(luma, v), green(luma, u, v), blue(luma, u)});
        }
    }
    return hashBytes(rgb.data(), rgb.size());
}

/// Takes the packets of one stream in turn.
class Decoder {
public:
    void take(ogg_packet& packet) {
        if (m_headersLeft == 0) {
            th_ycbcr_buffer planes;
            th_decode_packetin(m_decoder.get(), &packet, nullptr);
            th_decode_ycbcr_out(m_decoder.get(), planes);
            frames.push_back({hashOf(planes), th_packet_iskeyframe(&packet) == 1});
            return;
        }
        th_decode_headerin(m_info.get(), m_comment.get(), &m_setup, &packet);
        if (--m_headersLeft == 0) {
            const theora::TheoraSetup owner(m_setup);
            m_decoder.reset(th_decode_alloc(m_info.get(), m_setup));
        }
    }

    std::vector<Frame> frames;

private:
    int m_headersLeft = 3;
    theora::TheoraInfo m_info;
    theora::TheoraComment m_comment;
    th_setup_info* m_setup = nullptr;
    theora::TheoraDecoder m_decoder;
};

} // namespace

std::vector<Frame> decode(const support::Bytes& file) {
    theora::OggSync sync;
    const auto size = static_cast<long>(file.size());
    std::copy(file.begin(), file.end(), ogg_sync_buffer(sync.get(), size));
    ogg_sync_wrote(sync.get(), size);
    std::optional<theora::OggStream> stream;
    Decoder decoder;
    ogg_page page;
    while (ogg_sync_pageout(sync.get(), &page) == 1) {
        if (!stream && page.body_len > 7 && std::memcmp(page.body, "\x80theora", 7) == 0) {
            stream.emplace(ogg_page_serialno(&page));
        }
        if (stream && ogg_page_serialno(&page) == stream->get()->serialno) {
            ogg_stream_pagein(stream->get(), &page);
            ogg_packet packet;
            for (int got = 0; (got = ogg_stream_packetout(stream->get(), &packet)) != 0;) {
                if (got > 0) { // otherwise pages are missing
                    decoder.take(packet);
                }
            }
        }
    }
    return decoder.frames;
}

std::uint64_t hashBytes(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (std::size_t i = 0; i < count; ++i) {
        hash = (hash ^ bytes[i]) * 1099511628211ULL;
    }
    return hash;
}

std::uint8_t red(int y, int v) {
    return colorOf(scaled(y, 16, 9535.988) + scaled(v, 128, 13074.932));
}

std::uint8_t green(int y, int u, int v) {
    return colorOf(scaled(y, 16, 9535.988) - (scaled(u, 128, 3203.572) + scaled(v, 128, 6660.596)));
}

std::uint8_t blue(int y, int u) {
    return colorOf(scaled(y, 16, 9535.988) + scaled(u, 128, 16531.956));
}

} // namespace reference
