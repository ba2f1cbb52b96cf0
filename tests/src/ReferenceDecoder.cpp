#include "tests/src/ReferenceDecoder.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "src/Theora/OggHandles.h"

namespace reference {
namespace {

constexpr std::size_t kHeaderCount = 3;

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

} // namespace

std::vector<Packet> packetsOf(const support::Bytes& file, std::string_view tag) {
    theora::OggSync sync;
    const auto size = static_cast<long>(file.size());
    std::copy(file.begin(), file.end(), ogg_sync_buffer(sync.get(), size));
    ogg_sync_wrote(sync.get(), size);
    std::optional<theora::OggStream> stream;
    std::vector<Packet> packets;
    ogg_page page;
    for (int got = 0; (got = ogg_sync_pageout(sync.get(), &page)) != 0;) {
        if (got < 0) {
            continue;
        }
        const std::string_view body(reinterpret_cast<const char*>(page.body),
                                    static_cast<std::size_t>(page.body_len));
        if (!stream && body.starts_with(tag)) {
            stream.emplace(ogg_page_serialno(&page));
        }
        if (!stream || ogg_page_serialno(&page) != stream->get()->serialno) {
            continue;
        }
        ogg_stream_pagein(stream->get(), &page);
        ogg_packet packet;
        while ((got = ogg_stream_packetout(stream->get(), &packet)) != 0) {
            if (got > 0) {
                packets.push_back({{packet.packet, packet.packet + packet.bytes}, packet});
                packets.back().packet.packet = packets.back().bytes.data();
            }
        }
    }
    return packets;
}

std::vector<std::uint64_t> decode(const support::Bytes& file) {
    std::vector<Packet> packets = packetsOf(file, "\x80theora");
    theora::TheoraInfo info;
    theora::TheoraComment comment;
    th_setup_info* setup = nullptr;
    for (std::size_t i = 0; i < kHeaderCount; ++i) {
        th_decode_headerin(info.get(), comment.get(), &setup, &packets[i].packet);
    }
    const theora::TheoraSetup owner(setup);
    const theora::TheoraDecoder decoder(th_decode_alloc(info.get(), setup));
    std::vector<std::uint64_t> hashes;
    for (std::size_t i = kHeaderCount; i < packets.size(); ++i) {
        th_decode_packetin(decoder.get(), &packets[i].packet, nullptr);
        th_ycbcr_buffer planes;
        th_decode_ycbcr_out(decoder.get(), planes);
        hashes.push_back(hashOf(planes));
    }
    return hashes;
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
