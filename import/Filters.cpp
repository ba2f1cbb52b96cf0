// What is done to picture and sound on the way, in the converter's own notation
// (https://ffmpeg.org/ffmpeg-filters.html).
#include "import/Filters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

#include "import/Arguments.h"
#include "platform/Geometry.h"

namespace imports {
namespace {

using platform::Size;

constexpr int kDefaultWhite = 100; ///< candelas, of a picture with a usual range of brightness

std::string text(Size size, char separator) {
    return std::to_string(size.width) + separator + std::to_string(size.height);
}

template <std::size_t N>
bool isOneOf(std::string_view word, const std::array<std::string_view, N>& words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::string deinterlacing(const VideoStream& video) {
    if (video.fieldOrder == "progressive") {
        return {};
    }
    // These say so for each frame; of the others only the file's header does.
    constexpr std::array<std::string_view, 8> kTelling{
        "h264", "hevc", "mpeg1video", "mpeg2video", "mpeg4", "dvvideo", "vc1", "prores"};
    std::string mark;
    if (!video.fieldOrder.empty() && !isOneOf(video.codec, kTelling)) {
        const bool isTopFirst = video.fieldOrder == "tt" || video.fieldOrder == "bt";
        mark = isTopFirst ? "setfield=tff," : "setfield=bff,";
    }
    return mark + "bwdif=mode=send_frame:deint=interlaced,";
}

std::string zscaleStart(Size size) {
    return "zscale=w=" + std::to_string(size.width) + ":h=" + std::to_string(size.height) +
           ":f=bicubic";
}

/// A word that the filter knows; `usual` for others.
template <std::size_t N>
std::string known(const std::string& word, const std::array<std::string_view, N>& words,
                  const char* usual) {
    return isOneOf(word, words) ? word : usual;
}

/// Brightness beyond what the clip can show is brought into its range, colours likewise.
std::string fromHighRange(const VideoStream& video, Size size) {
    constexpr std::array<std::string_view, 4> kMatrices{"bt709", "bt470bg", "smpte170m",
                                                        "bt2020nc"};
    constexpr std::array<std::string_view, 5> kPrimaries{"bt709", "bt470bg", "smpte170m", "bt2020",
                                                         "smpte432"};
    const std::string matrix = known(video.matrix, kMatrices, "bt2020nc");
    const std::string primaries = known(video.primaries, kPrimaries, "bt2020");
    return zscaleStart(size) + ":min=" + matrix + ":pin=" + primaries + ":tin=" + video.transfer +
           ":rin=" + (video.range == "pc" ? "full" : "limited") + ":p=" + primaries +
           ":t=linear:npl=" + std::to_string(kDefaultWhite) +
           ",format=gbrpf32le,zscale=min=gbr:tin=linear:pin=" + primaries +
           ":p=bt709,tonemap=mobius:desat=0,"
           "zscale=min=gbr:tin=linear:pin=bt709:t=bt709:m=bt470bg:r=limited";
}

/// Theora has one matrix between colours and what is stored.
std::string fromOtherMatrix(const VideoStream& video, Size size) {
    const bool isWide = video.primaries == "bt2020";
    return zscaleStart(size) + ":min=" + video.matrix +
           ":rin=" + (video.range == "pc" ? "full" : "limited") +
           (isWide ? ":pin=bt2020:tin=bt709:p=bt709:t=bt709" : "") + ":m=bt470bg:r=limited";
}

std::string scaling(const VideoStream& video, Size size) {
    if (video.transfer == "smpte2084" || video.transfer == "arib-std-b67") {
        return fromHighRange(video, size);
    }
    constexpr std::array<std::string_view, 3> kOther{"bt709", "smpte240m", "bt2020nc"};
    if (isOneOf(video.matrix, kOther)) {
        return fromOtherMatrix(video, size);
    }
    return "scale=" + text(size, ':') + ":flags=bicubic+accurate_rnd+full_chroma_int:out_range=tv";
}

/// The expression for times that begin so much earlier; empty if none do.
std::string earlier(double seconds) {
    const long long microseconds = std::llround(seconds * 1e6);
    return microseconds > 0 ? "PTS-" + std::to_string(microseconds) + "/1e6/TB" : "";
}

/// Pictures at the end that repeat the one before them are no packets that the converter sees.
std::string stillEnd(const VideoStream& video, const Ratio& rate) {
    const std::string count = std::to_string(std::llround(video.seconds * rate.value()));
    return video.hasExactRate() && video.seconds > 0
               ? "tpad=stop_mode=clone:stop=" + count + ",trim=end_frame=" + count + ','
               : "";
}

} // namespace

std::string videoFilters(const VideoStream& video, const Ratio& rate, const Framing& framing,
                         double lead) {
    const std::string cut = earlier(lead);
    std::string filters = (cut.empty() ? "" : "setpts=" + cut + ',') + deinterlacing(video) +
                          "fps=fps=" + ratioText(rate) + ":start_time=0," + stillEnd(video, rate) +
                          scaling(video, framing.scaled) + ",format=yuv420p";
    if (framing.cropped != framing.scaled) {
        filters += ",crop=" + text(framing.cropped, ':') + ':' + std::to_string(framing.crop.x) +
                   ':' + std::to_string(framing.crop.y);
    }
    if (framing.frame != framing.cropped) {
        filters += ",pad=" + text(framing.frame, ':') + ':' + std::to_string(framing.inFrame.x) +
                   ':' + std::to_string(framing.inFrame.y) + ":black";
    }
    return filters + ",setsar=1";
}

std::string soundFilters(const SoundStream& sound, double lead) {
    const std::string cut = earlier(lead);
    // From the clip's start on, with gaps filled: places in the sound are places in time.
    std::string filters = (cut.empty() ? "" : "asetpts=" + cut + ',') +
                          "aresample=48000:async=1000:min_comp=0.01:first_pts=0";
    // How to mix channels without places is not known: the first two are taken.
    const bool hasPlaces = !sound.layout.empty() && !sound.layout.starts_with("ambisonic") &&
                           sound.layout.find("channels") == std::string::npos;
    if (sound.channels > 2 && !hasPlaces) {
        filters = "pan=stereo|c0=c0|c1=c1," + filters;
    }
    return filters + ",aformat=channel_layouts=stereo";
}

} // namespace imports
