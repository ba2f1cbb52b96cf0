#include "src/TheoraStill.h"

#include <algorithm>
#include <cstdint>
#include <exception>

#include "platform/raster/StillScaler.h"
#include "src/StoppableSource.h"
#include "src/Theora/GranuleFormat.h"
#include "src/Theora/OggHandles.h"
#include "src/Theora/PacketReader.h"
#include "src/Theora/PictureDecoder.h"
#include "src/Theora/SharedSource.h"
#include "src/Theora/StreamHeaders.h"
#include "src/Theora/StreamScan.h"
#include "src/TheoraOutputMode.h"
#include "src/TheoraPicture.h"
#include "src/TheoraUtil/ColorConvert.h"

namespace theora {
namespace {

using platform::Bitmap;
using platform::Rect;
using platform::Size;

/// One packet cannot be stopped: larger frames would take too long.
constexpr std::int64_t kMaxPixels = std::int64_t{16} << 20U;
/// Where clips that fade in have a picture.
constexpr double kLaterSeconds = 2.0;
constexpr int kFlatRange = 24;

/// A colour's sum of red, green and blue hardly changes anywhere.
bool isFlat(const Bitmap& picture) {
    int least = 3 * 255;
    int most = 0;
    for (int y = 0; y < picture.size().height; ++y) {
        const std::uint32_t* row = picture.row(y);
        for (int x = 0; x < picture.size().width; ++x) {
            const int sum = static_cast<int>((row[x] & 0xFFU) + (row[x] >> 8U & 0xFFU) +
                                             (row[x] >> 16U & 0xFFU));
            least = std::min(least, sum);
            most = std::max(most, sum);
        }
    }
    return most - least < 3 * kFlatRange;
}

class StillReader {
public:
    StillReader(SharedSource& source, const std::function<bool()>& stop, Size box)
        : m_source(source), m_stop(stop), m_box(box) {}

    void read(ClipStill& still) {
        readStreamHeaders(m_source, m_headers);
        const th_info& info = *m_headers.theora.info.get();
        GranuleFormat format(info);
        const StreamLayout layout = scanStream(m_source, m_headers, format);
        still.frame = {static_cast<int>(info.frame_width), static_cast<int>(info.frame_height)};
        const double perSecond = static_cast<double>(info.fps_numerator) / info.fps_denominator;
        if (layout.frameCount >= 0) {
            still.seconds = static_cast<double>(layout.frameCount) / perSecond;
        }
        still.isPlayable = true;
        if (std::int64_t{still.frame.width} * still.frame.height > kMaxPixels) {
            return;
        }
        PictureDecoder decoder(m_source, m_stop, m_headers.theora, layout, format);
        still.picture = picture(decoder, still.frame, 0);
        if (!still.picture.isEmpty() && isFlat(still.picture)) {
            const double later = std::min(still.seconds / 2, kLaterSeconds) * perSecond;
            Bitmap other = picture(decoder, still.frame, static_cast<std::int64_t>(later));
            still.picture = other.isEmpty() ? still.picture : other;
        }
    }

private:
    [[nodiscard]] Bitmap picture(PictureDecoder& decoder, Size frame, std::int64_t number) {
        if (decoder.decodeTo(std::max<std::int64_t>(number, 0), [](std::int64_t) {}) ==
            DecodeResult::stopped) {
            return {};
        }
        const TheoraPicture decoded = decoder.picture();
        if (decoded.identity == 0 || m_stop()) { // the decoder's own grey
            return {};
        }
        Bitmap whole(frame);
        convertPicture(decoded, TheoraOutputMode::TH_BGRX,
                       reinterpret_cast<std::uint8_t*>(whole.row(0)), frame.width, frame.height);
        return reduced(whole, m_box);
    }

    SharedSource& m_source;
    const std::function<bool()>& m_stop;
    Size m_box;
    StreamHeaders m_headers;
};

} // namespace

ClipStill readClipStill(const std::string& path, platform::FileSystem& files, Size box,
                        const std::function<bool()>& stop) {
    ClipStill still;
    try {
        StoppableSource file(path, files, stop);
        SharedSource source(file);
        StillReader(source, stop, box).read(still);
    } catch (const std::exception&) { // no clip, no memory, or stopped: what was found so far
    }
    return still;
}

Bitmap reduced(const Bitmap& picture, Size box) {
    const std::int64_t width = picture.size().width;
    const std::int64_t height = picture.size().height;
    if (width <= box.width && height <= box.height) {
        return picture;
    }
    const bool isWide = width * box.height > height * box.width;
    const std::int64_t divisor = isWide ? width : height;
    const std::int64_t side = isWide ? box.width : box.height;
    const auto scaled = [&](std::int64_t length) {
        return static_cast<int>(
            std::max<std::int64_t>((2 * length * side + divisor) / (2 * divisor), 1));
    };
    Bitmap small(Size{scaled(width), scaled(height)});
    const Rect all{0, 0, small.size().width, small.size().height};
    if (!small.isEmpty()) {
        platform::raster::drawStill(picture, small, all, all);
    }
    return small;
}

} // namespace theora
