#include "tests/support/SoundMaker.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>

#include <vorbis/vorbisenc.h>

#include "src/Theora/OggHandles.h"

namespace support {
namespace {

constexpr float kQuality = 0.1F;
constexpr int kBlock = 512;

void feed(vorbis_dsp_state& state, int from, int count) {
    float* samples = vorbis_analysis_buffer(&state, count)[0];
    for (int i = 0; i < count; ++i) {
        samples[i] = soundAt(static_cast<double>(from + i) / kClipSoundRate);
    }
    vorbis_analysis_wrote(&state, count);
}

void drain(vorbis_dsp_state& state, vorbis_block& block, EncodedStream& stream) {
    while (vorbis_analysis_blockout(&state, &block) == 1) {
        vorbis_analysis(&block, nullptr);
        vorbis_bitrate_addblock(&block);
        ogg_packet packet;
        while (vorbis_bitrate_flushpacket(&state, &packet) == 1) {
            stream.data.push_back(copyPacket(packet));
        }
    }
}

} // namespace

float soundAt(double seconds) {
    return static_cast<float>(0.5 * std::sin(6.283 * (200 + 60 * seconds) * seconds));
}

EncodedStream encodeSound(double seconds) {
    theora::VorbisInfo info;
    if (vorbis_encode_init_vbr(info.get(), 1, kClipSoundRate, kQuality) != 0) {
        throw std::runtime_error("the sound encoder refuses this rate");
    }
    theora::VorbisComment comment;
    vorbis_dsp_state state{};
    vorbis_analysis_init(&state, info.get());
    const std::unique_ptr<vorbis_dsp_state, theora::CallFree<vorbis_dsp_clear>> stateEnd(&state);
    vorbis_block block{};
    vorbis_block_init(&state, &block);
    const std::unique_ptr<vorbis_block, theora::CallFree<vorbis_block_clear>> blockEnd(&block);

    ogg_packet headers[3];
    vorbis_analysis_headerout(&state, comment.get(), &headers[0], &headers[1], &headers[2]);
    EncodedStream stream;
    for (const ogg_packet& header : headers) {
        stream.headers.push_back(copyPacket(header));
    }
    const int total = static_cast<int>(seconds * kClipSoundRate);
    for (int done = 0; done < total; done += kBlock) {
        feed(state, done, std::min(kBlock, total - done));
        drain(state, block, stream);
    }
    vorbis_analysis_wrote(&state, 0);
    drain(state, block, stream);
    return stream;
}

} // namespace support
