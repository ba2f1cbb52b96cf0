// The converter's arguments (https://ffmpeg.org/ffmpeg.html, https://ffmpeg.org/ffprobe.html).
#include "import/Arguments.h"

#include "import/Filters.h"
#include "import/ImportTypes.h"
#include "import/Plan.h"
#include "import/Source.h"

namespace imports {
namespace {

/// Frames; how far an exact seek has to decode at most.
constexpr int kKeyFrameDistance = 12;

/// Seconds. A picture that comes later than the sound by less is the start of the clip: many
/// formats put their sound a little earlier, and the clip must not begin with a frame that is there
/// twice. Else the first picture stands still until its time, so that no sound is lost.
constexpr double kLongestLead = 0.2;

/// What files may be: nothing that names other files, or that is made up on the fly.
constexpr const char* kFormats =
    "mov,mp4,m4a,3gp,3g2,mj2,matroska,webm,avi,mpegts,mpeg,mpegvideo,asf,flv,ogg,dv,gif,mxf,nut,rm,"
    "wtv,h264,hevc,m4v,mjpeg,ivf,obu,av1,swf,mp3,aac,wav,flac,aiff,amr,caf,ac3,w64,ape";

} // namespace

Arguments inputArguments(const std::string& source) {
    return {"-protocol_whitelist",
            "file",
            "-format_whitelist",
            kFormats,
            "-probesize",
            "20000000",
            "-analyzeduration",
            "10000000",
            "-max_pixels",
            "134217728",
            "-i",
            "file:" + source};
}

Plan planFor(const Source& source, const ImportSettings& settings, RateChoice rate) {
    const VideoStream& video = *source.video;
    Plan plan;
    plan.videoIndex = video.index;
    plan.framing = frameFor(uprightSize(video), settings.quality);
    const bool keepsRate = rate == RateChoice::asIs && video.hasExactRate();
    plan.rate = keepsRate ? video.baseRate : constantRate(video.averageRate);
    plan.theoraQuality = factsOf(settings.quality).theoraQuality;
    plan.seconds = video.seconds > 0 ? video.seconds : source.seconds;
    const double delay = pictureDelay(source);
    const double lead = delay < kLongestLead ? delay : 0;
    plan.videoFilters = videoFilters(video, plan.rate, plan.framing, lead);
    if (settings.keepsSound && source.sound) {
        plan.soundIndex = source.sound->index;
        plan.soundFilters = soundFilters(*source.sound, lead);
    }
    return plan;
}

Arguments probeArguments(const std::string& source) {
    Arguments arguments{"-v", "error", "-print_format", "flat", "-show_streams", "-show_format"};
    append(arguments, inputArguments(source));
    return arguments;
}

Arguments packetArguments(const std::string& source, int stream) {
    Arguments arguments{"-v",
                        "error",
                        "-print_format",
                        "csv=p=0",
                        "-show_entries",
                        "packet=pts_time,duration_time,flags",
                        "-select_streams",
                        std::to_string(stream)};
    append(arguments, inputArguments(source));
    return arguments;
}

Arguments convertArguments(const Plan& plan, const std::string& source, const std::string& target,
                           bool takesReadable) {
    Arguments arguments{"-hide_banner", "-v", "error", "-nostdin", "-y"};
    append(arguments, takesReadable ? Arguments{"-max_error_rate", "1"} : Arguments{"-xerror"});
    append(arguments, {"-progress", "pipe:1", "-stats_period", "0.25"});
    append(arguments, inputArguments(source));
    append(arguments, {"-map", "0:" + std::to_string(plan.videoIndex), "-vf", plan.videoFilters,
                       "-c:v", "libtheora", "-q:v", std::to_string(plan.theoraQuality), "-g",
                       std::to_string(kKeyFrameDistance)});
    if (plan.soundIndex) {
        append(arguments, {"-map", "0:" + std::to_string(*plan.soundIndex), "-af",
                           plan.soundFilters, "-c:a", "libvorbis", "-q:a", "4"});
    }
    append(arguments, {"-sn", "-dn", "-map_metadata", "-1", "-map_chapters", "-1", "-f", "ogg",
                       "file:" + target});
    return arguments;
}

} // namespace imports
