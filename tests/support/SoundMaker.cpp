#include "tests/support/SoundMaker.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include <vorbis/vorbisenc.h>

namespace support {
namespace {

constexpr float kQuality = 0.1F;
constexpr int kBlock = 512;

OggPacketData copyPacket(const ogg_packet& packet) {
    return {Bytes(packet.packet, packet.packet + packet.bytes), packet.granulepos};
}

class SoundEncoder {
public:
    explicit SoundEncoder(int rate) : m_rate(rate) {
        vorbis_info_init(&m_info);
        if (vorbis_encode_init_vbr(&m_info, 1, rate, kQuality) != 0) {
            throw std::runtime_error("the sound encoder refuses this rate");
        }
        vorbis_comment_init(&m_comment);
        vorbis_analysis_init(&m_state, &m_info);
        vorbis_block_init(&m_state, &m_block);
    }
    SoundEncoder(const SoundEncoder&) = delete;
    SoundEncoder& operator=(const SoundEncoder&) = delete;
    ~SoundEncoder() {
        vorbis_block_clear(&m_block);
        vorbis_dsp_clear(&m_state);
        vorbis_comment_clear(&m_comment);
        vorbis_info_clear(&m_info);
    }

    SoundStream encode(double seconds) {
        ogg_packet headers[3];
        vorbis_analysis_headerout(&m_state, &m_comment, &headers[0], &headers[1], &headers[2]);
        SoundStream stream;
        for (const ogg_packet& header : headers) {
            stream.headers.push_back(copyPacket(header));
            stream.headers.back().granule = 0;
        }
        const int total = static_cast<int>(seconds * m_rate);
        for (int done = 0; done < total; done += kBlock) {
            feed(done, std::min(kBlock, total - done));
            drain(stream);
        }
        vorbis_analysis_wrote(&m_state, 0);
        drain(stream);
        return stream;
    }

private:
    void feed(int from, int count) {
        float* samples = vorbis_analysis_buffer(&m_state, count)[0];
        for (int i = 0; i < count; ++i) {
            const double time = static_cast<double>(from + i) / m_rate;
            samples[i] = static_cast<float>(0.5 * std::sin(6.283 * (200 + 60 * time) * time));
        }
        vorbis_analysis_wrote(&m_state, count);
    }

    void drain(SoundStream& stream) {
        while (vorbis_analysis_blockout(&m_state, &m_block) == 1) {
            vorbis_analysis(&m_block, nullptr);
            vorbis_bitrate_addblock(&m_block);
            ogg_packet packet;
            while (vorbis_bitrate_flushpacket(&m_state, &packet) == 1) {
                stream.data.push_back(copyPacket(packet));
            }
        }
    }

    int m_rate;
    vorbis_info m_info{};
    vorbis_comment m_comment{};
    vorbis_dsp_state m_state{};
    vorbis_block m_block{};
};

} // namespace

SoundStream encodeSound(double seconds, int samplesPerSecond) {
    return SoundEncoder(samplesPerSecond).encode(seconds);
}

} // namespace support
