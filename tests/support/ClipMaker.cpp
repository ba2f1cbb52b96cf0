#include "tests/support/ClipMaker.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>

#include <theora/theoraenc.h>

#include "src/Theora/OggHandles.h"

namespace support {
namespace {

constexpr int kNumberBits = 16;
constexpr int kCell = 8; // a bit is a block of 8 x 8 pixels
constexpr int kCellsPerRow = 8;
constexpr int kTheoraSerial = 0x5101;
constexpr int kOtherTheoraSerial = 0x5102;
constexpr int kSoundSerial = 0x5103;
constexpr int kSkeletonSerial = 0x5104;

using Encoder = std::unique_ptr<th_enc_ctx, theora::CallFree<th_encode_free>>;

class Picture {
public:
    explicit Picture(const ClipSpec& spec) : m_flatFrames(spec.flatFrames), m_luma(spec.luma) {
        const int hDivide = spec.chroma == Chroma::yuv444 ? 1 : 2;
        const int vDivide = spec.chroma == Chroma::yuv420 ? 2 : 1;
        for (int i = 0; i < 3; ++i) {
            th_img_plane& plane = m_planes[i];
            plane.width = i == 0 ? spec.width : spec.width / hDivide;
            plane.height = i == 0 ? spec.height : spec.height / vDivide;
            plane.stride = plane.width;
            m_samples[i].resize(static_cast<std::size_t>(plane.width) *
                                static_cast<std::size_t>(plane.height));
            plane.data = m_samples[i].data();
        }
    }

    th_img_plane* draw(int number) {
        for (int i = 0; i < 3; ++i) {
            const th_img_plane& plane = m_planes[i];
            if (number < m_flatFrames) {
                m_samples[i].assign(m_samples[i].size(), 128);
                continue;
            }
            for (int y = 0; y < plane.height; ++y) {
                for (int x = 0; x < plane.width; ++x) {
                    plane.data[y * plane.stride + x] = static_cast<std::uint8_t>(
                        i == 0   ? (m_luma ? m_luma(number, x, y) : luma(x, y, number))
                        : m_luma ? 128
                                 : 90 + (x * (i + 1) + y * 2 + number * (7 - i)) % 80);
                }
            }
        }
        return m_planes;
    }

private:
    static int luma(int x, int y, int number) {
        const int bit = y / kCell * kCellsPerRow + x / kCell;
        if (x < kCell * kCellsPerRow && bit < kNumberBits) {
            return ((number >> bit) & 1) != 0 ? 220 : 30;
        }
        return 60 + (x * 2 + y * 3 + number * 5) % 120;
    }

    int m_flatFrames;
    std::function<std::uint8_t(int, int, int)> m_luma;
    Bytes m_samples[3];
    th_ycbcr_buffer m_planes{};
};

int shiftFor(const ClipSpec& spec) {
    return spec.granuleShift >= 0
               ? spec.granuleShift
               : static_cast<int>(std::bit_width(static_cast<unsigned>(spec.keyframeDistance - 1)));
}

void configure(const ClipSpec& spec, th_info& info) {
    const auto size = [](int value) { return static_cast<ogg_uint32_t>(value); };
    info.frame_width = size(spec.width);
    info.frame_height = size(spec.height);
    info.pic_width = size(spec.pictureWidth > 0 ? spec.pictureWidth : spec.width);
    info.pic_height = size(spec.pictureHeight > 0 ? spec.pictureHeight : spec.height);
    info.pic_x = size(spec.pictureX);
    info.pic_y = size(spec.pictureY);
    info.fps_numerator = kClipFramesPerSecond;
    info.fps_denominator = 1;
    info.pixel_fmt = spec.chroma == Chroma::yuv420   ? TH_PF_420
                     : spec.chroma == Chroma::yuv422 ? TH_PF_422
                                                     : TH_PF_444;
    info.quality = spec.quality;
    info.keyframe_granule_shift = shiftFor(spec);
}

class StreamEncoder {
public:
    explicit StreamEncoder(const ClipSpec& spec) : m_spec(spec), m_picture(spec) {
        theora::TheoraInfo info;
        configure(spec, *info.get());
        m_encoder.reset(th_encode_alloc(info.get()));
        if (!m_encoder) {
            throw std::runtime_error("the encoder refuses this clip");
        }
        setKeyframeDistance(spec.keyframeDistance);
    }

    EncodedStream encode() {
        EncodedStream stream;
        addHeaders(stream);
        for (int frame = 0; frame < m_spec.frames; ++frame) {
            addFrame(stream, frame);
        }
        stream.data.erase(stream.data.begin(), stream.data.begin() + m_spec.dropFrames);
        if (m_spec.damagedFrame >= 0) { // an undefined kind of keyframe
            stream.data[static_cast<std::size_t>(m_spec.damagedFrame)].bytes = {0x3F, 0xFF, 0xFF};
        }
        return stream;
    }

private:
    void setKeyframeDistance(int frames) {
        auto distance = static_cast<ogg_uint32_t>(frames);
        th_encode_ctl(m_encoder.get(), TH_ENCCTL_SET_KEYFRAME_FREQUENCY_FORCE, &distance,
                      sizeof distance);
    }

    void addHeaders(EncodedStream& stream) {
        theora::TheoraComment comment;
        ogg_packet packet;
        while (th_encode_flushheader(m_encoder.get(), comment.get(), &packet) > 0) {
            stream.headers.push_back(copyPacket(packet));
        }
        constexpr std::size_t kSubversion = 9;
        if (m_spec.version320) {
            stream.headers[0].bytes[kSubversion] = 0;
        }
    }

    void addFrame(EncodedStream& stream, int frame) {
        OggPacketData packet;
        // The granule position limits the distance from the keyframe.
        const bool tooFar = frame - m_keyframe >= 1 << shiftFor(m_spec);
        const bool empty = frame > 0 && !tooFar && m_spec.isEmpty && m_spec.isEmpty(frame);
        if (!empty) {
            setKeyframeDistance(tooFar ? 1 : m_spec.keyframeDistance);
            ogg_packet coded;
            if (th_encode_ycbcr_in(m_encoder.get(), m_picture.draw(frame)) != 0 ||
                th_encode_packetout(m_encoder.get(), 0, &coded) <= 0) {
                throw std::runtime_error("the encoder refuses a frame");
            }
            packet = copyPacket(coded);
            if (th_packet_iskeyframe(&coded) == 1) {
                m_keyframe = frame;
            }
        }
        const std::int64_t first = m_spec.firstNumber + (m_spec.version320 ? 0 : 1);
        packet.granule = ((first + m_keyframe) << shiftFor(m_spec)) + (frame - m_keyframe);
        stream.data.push_back(std::move(packet));
    }

    ClipSpec m_spec;
    Picture m_picture;
    Encoder m_encoder;
    int m_keyframe = 0;
};

class FileWriter {
public:
    explicit FileWriter(const ClipSpec& spec) : m_spec(spec) {}

    Bytes write() {
        if (m_spec.skeleton) {
            Bytes head(64, 0);
            std::copy_n("fishead", 8, head.begin());
            head[8] = 3;
            m_pages.emplace(kStart, m_skeleton.pages({{head, 0}}, {})[0].bytes);
        }
        if (m_spec.sound == Sound::before) {
            addSound();
        }
        addVideo(m_spec, m_video);
        if (m_spec.secondTheora) {
            ClipSpec other = m_spec;
            other.frames /= 2;
            addVideo(other, m_otherVideo);
        }
        if (m_spec.sound == Sound::after) {
            addSound();
        }
        if (m_spec.skeleton) {
            m_pages.emplace(kHeader, m_skeleton.lastEmptyPage(0).bytes);
        }
        Bytes file;
        for (const auto& [time, bytes] : m_pages) {
            file.insert(file.end(), bytes.begin(), bytes.end());
        }
        return file;
    }

private:
    static constexpr double kStart = -2; // before all others
    static constexpr double kHeader = -1;

    void addHeaders(const EncodedStream& stream, OggPager& pager) {
        m_pages.emplace(kStart, pager.pages({stream.headers[0]}, {})[0].bytes);
        pager.skipPageNumbers(m_spec.numbersJump ? 3 : 0);
        const PageLayout layout{.packetsPerPage = 2, .repeatsBegin = m_spec.pages.repeatsBegin};
        for (auto& page : pager.pages({stream.headers[1], stream.headers[2]}, layout)) {
            m_pages.emplace(kHeader, std::move(page.bytes));
        }
    }

    void addVideo(const ClipSpec& spec, OggPager& pager) {
        const EncodedStream stream = StreamEncoder(spec).encode();
        addHeaders(stream, pager);
        double frame = 0;
        for (auto& page : pager.pages(stream.data, spec.pages)) {
            frame += static_cast<double>(page.packets);
            m_pages.emplace(frame / kClipFramesPerSecond, std::move(page.bytes));
        }
        if (spec.emptyLastPage) {
            m_pages.emplace(1e9, pager.lastEmptyPage(spec.lastPageGranule).bytes);
        }
    }

    void addSound() {
        EncodedStream sound = encodeSound(m_spec.frames / double{kClipFramesPerSecond});
        for (OggPacketData& packet : sound.data) {
            packet.granule += m_spec.soundDelay;
        }
        for (std::size_t byte = 0; byte < 4; ++byte) {
            constexpr std::size_t kRateAt = 12;
            sound.headers[0].bytes[kRateAt + byte] =
                static_cast<std::uint8_t>(m_spec.claimedSoundRate >> 8 * byte);
        }
        addHeaders(sound, m_sound);
        if (m_spec.soundBegins >= 0) {
            m_pages.emplace(kHeader, m_sound.lastEmptyPage(m_spec.soundBegins).bytes);
        }
        const PageLayout layout{.packetsPerPage = 4, .repeatsBegin = m_spec.pages.repeatsBegin};
        for (auto& page : m_sound.pages(sound.data, layout)) {
            const double time = static_cast<double>(page.granule) / kClipSoundRate;
            m_pages.emplace(std::max(time, 0.0), std::move(page.bytes));
        }
    }

    ClipSpec m_spec;
    OggPager m_video{kTheoraSerial};
    OggPager m_otherVideo{kOtherTheoraSerial};
    OggPager m_sound{kSoundSerial};
    OggPager m_skeleton{kSkeletonSerial};
    std::multimap<double, Bytes> m_pages; ///< by time in seconds
};

} // namespace

Bytes makeClip(const ClipSpec& spec) {
    return FileWriter(spec).write();
}

int readFrameNumber(const std::uint8_t* rgb, int width, int height, int pixelBytes) {
    if (width < kCell * kCellsPerRow || height < kCell * kNumberBits / kCellsPerRow) {
        return -1;
    }
    int number = 0;
    for (int bit = 0; bit < kNumberBits; ++bit) {
        const int x = bit % kCellsPerRow * kCell + kCell / 2;
        const int y = bit / kCellsPerRow * kCell + kCell / 2;
        const int green = rgb[(y * width + x) * pixelBytes + 1];
        if (green > 100 && green < 150) {
            return -1;
        }
        if (green >= 150) {
            number |= 1 << bit;
        }
    }
    return number;
}

} // namespace support
