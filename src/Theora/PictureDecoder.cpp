#include "src/Theora/PictureDecoder.h"

#include <atomic>
#include <cstddef>

namespace theora {
namespace {

constexpr int kDecoderLine = 203;
constexpr std::uint8_t kBlankSample = 0x80; // what libtheora starts with, without a keyframe
// Up to this distance, decode on without searching for a keyframe in between.
constexpr std::int64_t kDecodeOn = 4;

std::uint64_t newIdentity() {
    static std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1) + 1;
}

} // namespace

PictureDecoder::PictureDecoder(SharedSource& source, const StopCheck& stop,
                               const TheoraHeaders& headers, const StreamLayout& layout,
                               const GranuleFormat& format)
    : m_headers(headers), m_search(source, stop, layout, format),
      m_packets(source, stop, layout, format) {
    makeDecoder();
}

void PictureDecoder::makeDecoder() {
    m_decoder.reset(th_decode_alloc(m_headers.info.get(), m_headers.setup.get()));
    if (!m_decoder) {
        refuseStream(kBadTheoraHeaders, kDecoderLine);
    }
    m_position = -1;
    m_hasPicture = false;
}

bool PictureDecoder::feed(const FramePacket& packet) {
    // A damaged or empty packet counts as a frame that repeats the last picture.
    ogg_packet copy = packet.packet;
    const int result = th_decode_packetin(m_decoder.get(), &copy, nullptr);
    const bool decoded = result == 0 || result == TH_DUPFRAME;
    if (result != TH_DUPFRAME || !m_hasPicture) {
        m_identity = newIdentity();
    }
    m_hasPicture = m_hasPicture || decoded;
    m_position = packet.number;
    m_packets.drop();
    return decoded;
}

void PictureDecoder::startAt(const DecodeStart& start) {
    // Before the first keyframe, pictures build on a blank one, which only a new decoder has.
    if (!start.isKeyframe) {
        makeDecoder();
    }
    m_position = -1;
    m_packets.start(start.position);
    for (const FramePacket* packet = m_packets.peek();
         packet != nullptr && packet->number < start.keyframe; packet = m_packets.peek()) {
        m_packets.drop();
    }
}

bool PictureDecoder::reposition(std::int64_t frame) {
    for (std::int64_t limit = frame;;) {
        DecodeStart start = m_search.startFor(limit);
        if (m_packets.stopped()) {
            return false;
        }
        if (m_position >= start.keyframe && m_position <= frame) {
            return true; // in the same group already
        }
        startAt(start);
        const FramePacket* packet = m_packets.peek();
        if (packet == nullptr) {
            return !m_packets.stopped();
        }
        if (!start.isKeyframe || feed(*packet)) {
            return true;
        }
        // A damaged keyframe: what follows builds on the previous group, as in playback.
        limit = start.keyframe - 1;
        m_position = -1;
    }
}

DecodeResult PictureDecoder::decodeTo(std::int64_t frame, const PictureSink& sink) {
    if (m_position == frame) {
        return DecodeResult::reached;
    }
    const bool near = m_position >= 0 && m_position < frame && frame - m_position <= kDecodeOn;
    if (!near) {
        if (!reposition(frame)) {
            return DecodeResult::stopped;
        }
        if (m_position >= 0) {
            sink(m_position);
        }
    }
    while (m_position < frame) {
        const FramePacket* packet = m_packets.peek();
        if (m_packets.stopped()) {
            return DecodeResult::stopped;
        }
        if (packet == nullptr) {
            return DecodeResult::endOfStream;
        }
        if (packet->number > frame && m_position >= 0) {
            return DecodeResult::reached; // no such frame: the previous one stands in
        }
        feed(*packet);
        sink(m_position);
    }
    return DecodeResult::reached;
}

DecodeResult PictureDecoder::decodeNext(const PictureSink& sink) {
    const FramePacket* packet = m_packets.peek();
    if (packet == nullptr) {
        return m_packets.stopped() ? DecodeResult::stopped : DecodeResult::endOfStream;
    }
    feed(*packet);
    sink(m_position);
    return DecodeResult::reached;
}

TheoraPicture PictureDecoder::blankPicture() {
    const th_info& info = *m_headers.info.get();
    m_blank.assign(info.frame_width, kBlankSample);
    const int width = static_cast<int>(info.frame_width);
    const int height = static_cast<int>(info.frame_height);
    TheoraPicture picture;
    picture.planes.fill({m_blank.data(), 0, width, height});
    return picture;
}

TheoraPicture PictureDecoder::picture() {
    th_ycbcr_buffer planes;
    TheoraPicture picture;
    if (!m_hasPicture || th_decode_ycbcr_out(m_decoder.get(), planes) != 0) {
        picture = blankPicture();
    } else {
        for (std::size_t i = 0; i < picture.planes.size(); ++i) {
            picture.planes[i] = {planes[i].data, planes[i].stride, planes[i].width,
                                 planes[i].height};
        }
        picture.identity = m_identity;
    }
    const ChromaShift shift = chromaShift(*m_headers.info.get());
    picture.chromaShiftX = shift.x;
    picture.chromaShiftY = shift.y;
    return picture;
}

} // namespace theora
