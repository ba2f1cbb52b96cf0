// The converter's options: https://ffmpeg.org/ffmpeg-codecs.html#libvpx. Of the demo's clips, 640 x
// 360 to 1280 x 720, with those chosen here: see README.md.
#include "import/WebClip.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "core/UnfinishedFile.h"
#include "import/Arguments.h"
#include "import/Failures.h"
#include "import/Filters.h"
#include "import/Look.h"
#include "import/Plan.h"

namespace imports {
namespace {

constexpr double kMaxRateError = 0.001; ///< of a rate that the header means
constexpr std::int64_t kRateParts = 1000;

/// From the first picture on, one for each tick of the clip's rate: pictures that the file repeats
/// are repeated, also at its end.
std::string pictureFilters(const Ratio& rate, int frameCount) {
    std::string filters = "setpts=PTS-STARTPTS,fps=fps=" + ratioText(rate) + ":start_time=0";
    if (frameCount > 0) {
        filters += ",tpad=stop_mode=clone:stop=" + std::to_string(frameCount);
    }
    // Theora has one matrix of colours; browsers would guess another one for large pictures.
    return filters + ",format=yuv420p,setparams=range=tv:colorspace=bt470bg,setsar=1";
}

/// Of one kind of a request, with what all kinds need.
class WebJob {
public:
    WebJob(platform::FileSystem& files, const WebClipRequest& request,
           const std::function<bool()>& isCancelled)
        : m_files(files), m_request(request), m_isCancelled(isCancelled) {}

    LookResult look() {
        return lookAt(m_files, m_request.source, m_request.converter, m_request.limits,
                      m_isCancelled);
    }

    ImportFailure run(const Arguments& arguments, const WebClipProgress& onProgress) {
        Lines lines;
        ConverterProgress progress;
        const RunResult run = runConverter(
            m_request.converter.ffmpeg, arguments, m_request.limits,
            [&](std::string_view piece) {
                Heard heard = Heard::nothing;
                lines.take(piece, [&](std::string_view line) {
                    heard = progress.take(line) ? Heard::progress : heard;
                });
                onProgress(static_cast<int>(std::min<std::int64_t>(progress.frames, INT32_MAX)));
                return heard;
            },
            m_isCancelled);
        if (run.end == RunEnd::cancelled) {
            return {};
        }
        return failureOfConversion(m_files, m_request.source, run, progress.frames, true);
    }

    /// Counts the pictures of the new clip.
    ImportFailure count() {
        PacketTimes times;
        const RunResult run = readPackets(m_request.target, 0, times, m_request.converter,
                                          m_request.limits, m_isCancelled);
        if (run.end == RunEnd::cancelled) {
            return {};
        }
        if (!run.isGood()) {
            return failureOfProbe(m_files, m_request.target, run);
        }
        const bool isRight =
            m_request.frameCount < 0 ? times.count() > 0 : times.count() == m_request.frameCount;
        return isRight
                   ? ImportFailure{}
                   : ImportFailure{
                         Failure::framesDiffer, 0, {}, std::to_string(times.count()) + " frames"};
    }

    [[nodiscard]] bool isCancelled() const { return m_isCancelled(); }

private:
    platform::FileSystem& m_files;
    const WebClipRequest& m_request;
    const std::function<bool()>& m_isCancelled;
};

} // namespace

Ratio webRate(const Source& source, double framesPerSecond) {
    if (framesPerSecond <= 0) {
        return constantRate(source.video->averageRate);
    }
    for (const Ratio& rate : {source.video->baseRate, source.video->averageRate}) {
        if (rate.isKnown() &&
            std::abs(rate.value() - framesPerSecond) <= kMaxRateError * framesPerSecond) {
            return rate;
        }
    }
    return {std::max<std::int64_t>(std::llround(std::min(framesPerSecond, 1e6) * kRateParts), 1),
            kRateParts};
}

Arguments webClipArguments(const Source& source, const WebClipRequest& request) {
    const Ratio rate = webRate(source, request.framesPerSecond);
    Arguments arguments{
        "-hide_banner", "-v",     "error",         "-nostdin", "-y", "-max_error_rate", "1",
        "-progress",    "pipe:1", "-stats_period", "0.25"};
    append(arguments, inputArguments(request.source));
    append(arguments, {"-map",
                       "0:" + std::to_string(source.video->index),
                       "-vf",
                       pictureFilters(rate, request.frameCount),
                       "-c:v",
                       "libvpx-vp9",
                       "-crf",
                       "32",
                       "-b:v",
                       "0",
                       "-deadline",
                       "good",
                       "-cpu-used",
                       "4",
                       "-row-mt",
                       "1",
                       "-tile-columns",
                       "1",
                       "-g",
                       "120",
                       "-colorspace",
                       "bt470bg",
                       "-color_range",
                       "tv"});
    if (request.frameCount > 0) {
        append(arguments, {"-frames:v", std::to_string(request.frameCount)});
    }
    if (source.sound) {
        std::string filters = soundFilters(*source.sound, 0);
        if (request.frameCount > 0) { // a clip ends with its last picture
            filters += ",atrim=end=" + std::to_string(request.frameCount / rate.value());
        }
        append(arguments, {"-map", "0:" + std::to_string(source.sound->index), "-af", filters,
                           "-c:a", "libopus", "-b:a", "96k"});
    }
    append(arguments, {"-sn", "-dn", "-map_metadata", "-1", "-map_chapters", "-1", "-f", "webm",
                       "file:" + request.target});
    return arguments;
}

ImportFailure makeWebClip(platform::FileSystem& files, const WebClipRequest& request,
                          const WebClipProgress& onProgress,
                          const std::function<bool()>& isCancelled) {
    WebJob job(files, request, isCancelled);
    core::UnfinishedFile target(files, request.target);
    target.watch();
    LookResult look = job.look();
    if (!look.source) {
        return std::move(look.failure);
    }
    ImportFailure failure = job.run(webClipArguments(*look.source, request), onProgress);
    if (failure.kind == Failure::none && !isCancelled()) {
        failure = job.count();
    }
    if (failure.kind == Failure::none && !isCancelled()) {
        target.keep();
    }
    return failure;
}

ImportFailure makeWebStill(platform::FileSystem& files, const WebClipRequest& request, int width,
                           const std::function<bool()>& isCancelled) {
    WebJob job(files, request, isCancelled);
    core::UnfinishedFile target(files, request.target);
    target.watch();
    Arguments arguments{"-hide_banner", "-v", "error", "-nostdin", "-y", "-max_error_rate", "1"};
    append(arguments, inputArguments(request.source));
    const std::string size =
        "scale='min(" + std::to_string(width) + ",iw)':-2:out_range=pc,format=yuvj420p,setsar=1";
    append(arguments,
           {"-an", "-vf", size, "-frames:v", "1", "-c:v", "mjpeg", "-q:v", "4", "-map_metadata",
            "-1", "-f", "image2", "-update", "1", "file:" + request.target});
    ImportFailure failure = job.run(arguments, [](int) {});
    if (failure.kind == Failure::none && !isCancelled() && files.info(request.target)) {
        target.keep();
    }
    return failure;
}

} // namespace imports
