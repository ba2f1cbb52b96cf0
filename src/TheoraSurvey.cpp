#include "src/TheoraSurvey.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <exception>

#include "src/StoppableSource.h"
#include "src/Theora/GranuleFormat.h"
#include "src/Theora/OggHandles.h"
#include "src/Theora/PacketReader.h"
#include "src/Theora/PageReader.h"
#include "src/Theora/PictureDecoder.h"
#include "src/Theora/SharedSource.h"
#include "src/Theora/StreamHeaders.h"
#include "src/Theora/StreamScan.h"
#include "src/TheoraPicture.h"

namespace theora {
namespace {

// Reads are of 16 KB each.
constexpr int kReadsToDecode = 4096;
constexpr int kReadsToScan = 16384;
constexpr int kSamples = 512;
constexpr double kSlowSeconds = 5.0;

class Survey {
public:
    Survey(const std::string& path, platform::FileSystem& files,
           const std::function<bool()>& isStopped)
        : m_isStopped(isStopped), m_file(path, files, isStopped), m_source(m_file) {}

    ClipSurvey run() {
        GranuleFormat format = readLayout();
        const th_info& info = *m_headers.theora.info.get();
        if (!decodesAny(format)) {
            return {};
        }
        ClipSurvey result;
        result.isDecodable = true;
        result.width = static_cast<int>(info.frame_width);
        result.height = static_cast<int>(info.frame_height);
        result.pictureX = static_cast<int>(info.pic_x);
        result.pictureY = static_cast<int>(info.pic_y);
        result.frameCount =
            static_cast<int>(std::clamp<std::int64_t>(m_layout.frameCount, -1, INT_MAX));
        const double framesPerSecond =
            static_cast<double>(info.fps_numerator) / info.fps_denominator;
        result.framesPerSecond = framesPerSecond;
        result.hasSound = m_headers.vorbis.present;
        // Positions count the frames since a key frame in so many bits.
        const double most = static_cast<double>(std::int64_t{1} << info.keyframe_granule_shift);
        if (most / framesPerSecond > kSlowSeconds) {
            result.keyFrameSeconds = static_cast<double>(longestGroup(format)) / framesPerSecond;
        }
        return result;
    }

    bool decodesLast() {
        GranuleFormat format = readLayout();
        m_reads = kReadsToDecode;
        PictureDecoder decoder(m_source, m_stop, m_headers.theora, m_layout, format);
        const std::int64_t last = m_layout.frameCount - 1;
        return m_layout.frameCount > 0 &&
               decoder.decodeTo(last, [](std::int64_t) {}) == DecodeResult::reached &&
               decoder.picture().identity != 0;
    }

private:
    GranuleFormat readLayout() {
        readStreamHeaders(m_source, m_headers);
        GranuleFormat format(*m_headers.theora.info.get());
        m_layout = scanStream(m_source, m_headers, format);
        return format;
    }

    [[nodiscard]] bool decodesAny(const GranuleFormat& format) {
        m_reads = kReadsToDecode;
        PictureDecoder decoder(m_source, m_stop, m_headers.theora, m_layout, format);
        const PictureDecoder::PictureSink ignore = [](std::int64_t) {};
        while (decoder.decodeNext(ignore) == DecodeResult::reached) {
            if (decoder.picture().identity != 0) {
                return true;
            }
        }
        return false;
    }

    /// In frames.
    [[nodiscard]] std::int64_t longestGroup(const GranuleFormat& format) {
        m_reads = kReadsToScan;
        PacketReader packets(m_source, m_stop, m_layout, format);
        std::int64_t longest = 0;
        std::int64_t keyFrame = m_layout.firstFrame;
        std::int64_t end = keyFrame;
        for (const FramePacket* packet = packets.peek(); packet != nullptr;
             packet = packets.peek()) {
            end = packet->number + 1;
            if (packet->isKeyframe) {
                longest = std::max(longest, packet->number - keyFrame);
                keyFrame = packet->number;
            }
            packets.drop();
        }
        longest = std::max(longest, end - keyFrame);
        const std::int64_t scanned = std::int64_t{kReadsToScan} * 16384;
        return m_source.size() <= scanned ? longest
                                          : std::max(longest, longestSampled(format, scanned));
    }

    /// What the pages at some places beyond `from` tell: no more than the real length.
    [[nodiscard]] std::int64_t longestSampled(const GranuleFormat& format, std::int64_t from) {
        std::int64_t longest = 0;
        PageReader pages(m_source, m_stop);
        for (int sample = 0; sample < kSamples; ++sample) {
            m_reads = 8; // a page has at most 64 KB
            pages.seek(from + (m_source.size() - from) / kSamples * sample);
            ogg_page page;
            while (pages.next(page)) {
                const std::int64_t granule = ogg_page_granulepos(&page);
                if (ogg_page_serialno(&page) == m_layout.serial && granule >= 0) {
                    longest =
                        std::max(longest, format.frameOf(granule) - format.keyframeOf(granule) + 1);
                    break;
                }
            }
        }
        return longest;
    }

    const std::function<bool()>& m_isStopped;
    StoppableSource m_file;
    SharedSource m_source;
    int m_reads = 0; ///< that are left
    const StopCheck m_stop = [this] { return --m_reads < 0 || m_isStopped(); };
    StreamHeaders m_headers;
    StreamLayout m_layout;
};

} // namespace

ClipSurvey surveyClip(const std::string& path, platform::FileSystem& files,
                      const std::function<bool()>& isStopped) {
    try {
        return Survey(path, files, isStopped).run();
    } catch (const std::exception&) { // the file, or memory
        return {};
    }
}

bool decodesToItsEnd(const std::string& path, platform::FileSystem& files,
                     const std::function<bool()>& isStopped) {
    try {
        return Survey(path, files, isStopped).decodesLast();
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace theora
