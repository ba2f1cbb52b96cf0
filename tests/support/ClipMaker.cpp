#include "tests/support/ClipMaker.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <stdexcept>

#include <theora/theoraenc.h>

#include "tests/support/SoundMaker.h"

namespace support {
namespace {

constexpr int kNumberBits = 16;
constexpr int kCell = 8; // a bit is a block of 8 x 8 pixels
constexpr int kCellsPerRow = 8;
constexpr int kTheoraSerial = 0x5101;
constexpr int kOtherTheoraSerial = 0x5102;
constexpr int kSoundSerial = 0x5103;
constexpr int kSkeletonSerial = 0x5104;

struct EncoderFree {
    void operator()(th_enc_ctx* context) const { th_encode_free(context); }
};
using Encoder = std::unique_ptr<th_enc_ctx, EncoderFree>;

class Picture {
public:
    explicit Picture(const ClipSpec& spec) : m_spec(spec) {
        const int hDivide = spec.chroma == Chroma::yuv444 ? 1 : 2;
        const int vDivide = spec.chroma == Chroma::yuv420 ? 2 : 1;
        for (int i = 0; i < 3; ++i) {
            th_img_plane& plane = m_planes[i];
            plane.width = i == 0 ? spec.width : spec.width / hDivide;
            plane.height = i == 0 ? spec.height : spec.height / vDivide;
            plane.stride = plane.width;
            m_samples[i].resize(static_cast<std::size_t>(plane.width * plane.height));
            plane.data = m_samples[i].data();
        }
    }

    th_img_plane* draw(int number) {
        for (int i = 0; i < 3; ++i) {
            for (int y = 0; y < m_planes[i].height; ++y) {
                for (int x = 0; x < m_planes[i].width; ++x) {
                    at(i, x, y) = static_cast<std::uint8_t>(
                        i == 0 ? 60 + (x * 2 + y * 3 + number * 5) % 120
                               : 90 + (x * (i + 1) + y * 2 + number * (7 - i)) % 80);
                }
            }
        }
        for (int bit = 0; bit < kNumberBits; ++bit) {
            fillCell(bit, ((number >> bit) & 1) != 0 ? 220 : 30);
        }
        return m_planes;
    }

private:
    std::uint8_t& at(int plane, int x, int y) {
        return m_samples[plane][static_cast<std::size_t>(y * m_planes[plane].width + x)];
    }

    void fillCell(int bit, std::uint8_t luma) {
        const int left = bit % kCellsPerRow * kCell;
        const int top = bit / kCellsPerRow * kCell;
        for (int y = 0; y < kCell; ++y) {
            for (int x = 0; x < kCell; ++x) {
                at(0, left + x, top + y) = luma;
            }
        }
    }

    ClipSpec m_spec;
    std::vector<std::uint8_t> m_samples[3];
    th_ycbcr_buffer m_planes{};
};

int shiftFor(const ClipSpec& spec) {
    if (spec.granuleShift >= 0) {
        return spec.granuleShift;
    }
    int shift = 0;
    while ((1 << shift) < spec.keyframeDistance) {
        ++shift;
    }
    return shift;
}

void configure(const ClipSpec& spec, th_info& info) {
    info.frame_width = static_cast<ogg_uint32_t>(spec.width);
    info.frame_height = static_cast<ogg_uint32_t>(spec.height);
    info.pic_width =
        static_cast<ogg_uint32_t>(spec.pictureWidth > 0 ? spec.pictureWidth : spec.width);
    info.pic_height =
        static_cast<ogg_uint32_t>(spec.pictureHeight > 0 ? spec.pictureHeight : spec.height);
    info.pic_x = static_cast<ogg_uint32_t>(spec.pictureX);
    info.pic_y = static_cast<ogg_uint32_t>(spec.pictureY);
    info.fps_numerator = static_cast<ogg_uint32_t>(spec.fpsNumerator);
    info.fps_denominator = static_cast<ogg_uint32_t>(spec.fpsDenominator);
    info.pixel_fmt = spec.chroma == Chroma::yuv420   ? TH_PF_420
                     : spec.chroma == Chroma::yuv422 ? TH_PF_422
                                                     : TH_PF_444;
    info.quality = spec.quality;
    info.keyframe_granule_shift = shiftFor(spec);
}

/// Header packets and data packets of one Theora stream.
struct TheoraStream {
    std::vector<OggPacketData> headers;
    std::vector<OggPacketData> data;
};

OggPacketData copyPacket(const ogg_packet& packet) {
    return {Bytes(packet.packet, packet.packet + packet.bytes), 0};
}

class StreamEncoder {
public:
    explicit StreamEncoder(const ClipSpec& spec) : m_spec(spec), m_picture(spec) {
        th_info info;
        th_info_init(&info);
        configure(spec, info);
        m_encoder.reset(th_encode_alloc(&info));
        th_info_clear(&info);
        if (!m_encoder) {
            throw std::runtime_error("the encoder refuses this clip");
        }
        setKeyframeDistance(spec.keyframeDistance);
    }

    TheoraStream encode() {
        TheoraStream stream;
        addHeaders(stream);
        for (int frame = 0; frame < m_spec.frames; ++frame) {
            addFrame(stream, frame);
        }
        stream.data.erase(stream.data.begin(), stream.data.begin() + m_spec.dropFrames);
        if (m_spec.damagedFrame >= 0) { // a keyframe of a kind that does not exist
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

    void addHeaders(TheoraStream& stream) {
        th_comment comment;
        th_comment_init(&comment);
        ogg_packet packet;
        while (th_encode_flushheader(m_encoder.get(), &comment, &packet) > 0) {
            stream.headers.push_back(copyPacket(packet));
        }
        th_comment_clear(&comment);
        constexpr std::size_t kSubversion = 9;
        if (m_spec.version320) {
            stream.headers[0].bytes[kSubversion] = 0;
        }
    }

    void addFrame(TheoraStream& stream, int frame) {
        OggPacketData packet;
        // A granule position can count so many frames from the keyframe and no more.
        const bool tooFar = frame - m_keyframe >= 1 << shiftFor(m_spec);
        const bool empty = frame > 0 && !tooFar && m_spec.isEmpty && m_spec.isEmpty(frame);
        if (!empty) {
            setKeyframeDistance(tooFar ? 1 : m_spec.keyframeDistance);
            if (th_encode_ycbcr_in(m_encoder.get(), m_picture.draw(frame)) != 0) {
                throw std::runtime_error("the encoder refuses a frame");
            }
            ogg_packet coded;
            if (th_encode_packetout(m_encoder.get(), 0, &coded) <= 0) {
                throw std::runtime_error("the encoder gives no packet");
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

/// Pages of one stream in time order.
struct TimedPage {
    OggPageData page;
    double time = 0;
};

void append(Bytes& to, const OggPageData& page) {
    to.insert(to.end(), page.bytes.begin(), page.bytes.end());
}

class FileWriter {
public:
    explicit FileWriter(const ClipSpec& spec) : m_spec(spec) {}

    Bytes write() {
        const TheoraStream video = StreamEncoder(m_spec).encode();
        if (m_spec.skeleton) {
            addSkeletonStart();
        }
        if (m_spec.sound == Sound::before) {
            addSound();
        }
        addTheora(video, m_video);
        if (m_spec.secondTheora) {
            ClipSpec other = m_spec;
            other.frames = m_spec.frames / 2;
            addTheora(StreamEncoder(other).encode(), m_otherVideo);
        }
        if (m_spec.sound == Sound::after) {
            addSound();
        }
        if (m_spec.skeleton) {
            m_headers.push_back(m_skeleton.lastEmptyPage(0));
        }
        return join();
    }

private:
    void addSkeletonStart() {
        Bytes head(64, 0);
        std::copy_n("fishead", 8, head.begin());
        head[8] = 3;
        m_starts.push_back(m_skeleton.pages({{head, 0}}, {})[0]);
    }

    void addTheora(const TheoraStream& stream, OggPager& pager) {
        m_starts.push_back(pager.pages({stream.headers[0]}, {})[0]);
        pager.skipPageNumbers(m_spec.numbersJump ? 3 : 0);
        for (auto& page : pager.pages({stream.headers[1], stream.headers[2]}, {2, 255})) {
            m_headers.push_back(std::move(page));
        }
        double frame = 0;
        for (auto& page : pager.pages(stream.data, m_spec.pages)) {
            frame += static_cast<double>(page.packets);
            m_data.push_back(
                {std::move(page), frame * m_spec.fpsDenominator / m_spec.fpsNumerator});
        }
        if (m_spec.emptyLastPage) {
            m_data.push_back({pager.lastEmptyPage(m_spec.lastPageGranule), 1e9});
        }
    }

    void addSound() {
        const double seconds =
            static_cast<double>(m_spec.frames) * m_spec.fpsDenominator / m_spec.fpsNumerator;
        SoundStream sound = encodeSound(seconds, kClipSoundRate);
        for (OggPacketData& packet : sound.data) {
            packet.granule += m_spec.soundDelay;
        }
        m_starts.push_back(m_sound.pages({sound.headers[0]}, {})[0]);
        for (auto& page : m_sound.pages({sound.headers[1], sound.headers[2]}, {2, 255})) {
            m_headers.push_back(std::move(page));
        }
        for (auto& page : m_sound.pages(sound.data, {4, 255})) {
            const double time = static_cast<double>(page.granule) / kClipSoundRate;
            m_data.push_back({std::move(page), time});
        }
    }

    Bytes join() {
        Bytes file;
        for (const auto& page : m_starts) {
            append(file, page);
        }
        for (const auto& page : m_headers) {
            append(file, page);
        }
        std::stable_sort(m_data.begin(), m_data.end(),
                         [](const TimedPage& a, const TimedPage& b) { return a.time < b.time; });
        for (const auto& timed : m_data) {
            append(file, timed.page);
        }
        return file;
    }

    ClipSpec m_spec;
    OggPager m_video{kTheoraSerial};
    OggPager m_otherVideo{kOtherTheoraSerial};
    OggPager m_sound{kSoundSerial};
    OggPager m_skeleton{kSkeletonSerial};
    std::vector<OggPageData> m_starts;
    std::vector<OggPageData> m_headers;
    std::vector<TimedPage> m_data;
};

} // namespace

Bytes makeClip(const ClipSpec& spec) {
    return FileWriter(spec).write();
}

void writeBytes(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    if (!file) {
        throw std::runtime_error("cannot write " + path);
    }
}

int readFrameNumber(const std::uint8_t* rgb, int width, int height) {
    if (width < kCell * kCellsPerRow || height < kCell * kNumberBits / kCellsPerRow) {
        return -1;
    }
    int number = 0;
    for (int bit = 0; bit < kNumberBits; ++bit) {
        const int x = bit % kCellsPerRow * kCell + kCell / 2;
        const int y = bit / kCellsPerRow * kCell + kCell / 2;
        const int green = rgb[(y * width + x) * 3 + 1];
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
