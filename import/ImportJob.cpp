#include "import/ImportJob.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Paths.h"
#include "core/UnfinishedFile.h"
#include "import/Failures.h"
#include "import/Look.h"
#include "import/Names.h"
#include "import/Plan.h"
#include "import/Source.h"
#include "import/ZoneMapping.h"
#include "jobs/VideoImport.h"
#include "platform/Geometry.h"
#include "src/ClipEnding.h"
#include "src/TheoraSurvey.h"

namespace imports {
namespace {

using platform::FileSystem;
using platform::OpenMode;
using std::chrono::steady_clock;

class Job {
public:
    Job(FileSystem& files, const JobRequest& request, const ProgressSink& onProgress,
        const std::function<bool()>& isCancelled)
        : m_files(files), m_request(request), m_onProgress(onProgress), m_isCancelled(isCancelled),
          m_temporary(files, request.folder + jobs::newTemporary()) {}

    JobResult run() {
        LookResult look = lookAt(m_files, m_request.source, m_request.converter,
                                 m_request.limits.run, m_isCancelled);
        if (!look.source) {
            return fail(std::move(look.failure));
        }
        m_source = *std::move(look.source);
        ImportFailure failure = perform();
        if (failure.kind != Failure::none || m_isCancelled()) {
            return fail(std::move(failure));
        }
        return finish();
    }

private:
    JobResult fail(ImportFailure failure) const {
        return {m_isCancelled() ? ImportState::cancelled : ImportState::failed, std::move(failure)};
    }
    [[nodiscard]] bool isCancelled() const { return m_isCancelled(); }

    /// Up to a clip under its temporary name that is known to be good.
    ImportFailure perform() {
        m_baseName = baseNameFor(m_request.source);
        const bool takesFree = m_request.takesFreeName || m_request.kind == ImportKind::remake;
        if (!takesFree && !isFree(m_files, m_request.folder, m_baseName)) {
            std::vector<platform::FolderEntry> entries;
            const bool isReadable = m_files.list(m_request.folder, entries);
            return isReadable ? ImportFailure{Failure::nameTaken, 0, m_baseName}
                              : ImportFailure{Failure::notWritable};
        }
        jobs::removeLeftovers(m_files, m_request.folder);
        int error = 0;
        if (!m_temporary.make(error)) {
            return {Failure::notWritable, 0, {}, m_files.errorText(error)};
        }
        if (ImportFailure failure = measure(); failure.kind != Failure::none || isCancelled()) {
            return failure;
        }
        const bool isRemake = m_request.kind == ImportKind::remake;
        m_plan =
            planFor(m_source, m_request.settings, isRemake ? RateChoice::asIs : RateChoice::usual);
        if (m_plan.seconds > static_cast<double>(m_request.limits.length.count())) {
            return {Failure::tooLarge};
        }
        if (ImportFailure failure = convert(); failure.kind != Failure::none || isCancelled()) {
            return failure;
        }
        return verify();
    }

    /// Counts the frames where the file's headers do not.
    ImportFailure measure() {
        if (!needsPacketTimes(m_source)) {
            return {};
        }
        PacketTimes times;
        const RunResult run = readPackets(m_request.source, m_source.video->index, times,
                                          m_request.converter, scanLimits(), m_isCancelled);
        if (run.end == RunEnd::cancelled) {
            return {};
        }
        if (!run.isGood() && times.count() == 0) {
            return failureOfProbe(m_files, m_request.source, run);
        }
        if (endsTooSoon(run.messages) && !m_request.takesReadable) {
            return {Failure::cut, 0, {}, run.lastMessage()};
        }
        VideoStream& video = *m_source.video;
        if (const Ratio rate = times.rate(video.averageRate); rate.isKnown()) {
            video.averageRate = rate;
            video.seconds = times.seconds();
        }
        return {};
    }

    [[nodiscard]] RunLimits scanLimits() const {
        RunLimits limits = m_request.limits.run;
        limits.printedBytes = std::size_t{1} << 30U; // a line for each frame of a day
        return limits;
    }

    ImportFailure convert() {
        Lines lines;
        const auto begun = steady_clock::now();
        const RunResult run = runConverter(
            m_request.converter.ffmpeg,
            convertArguments(m_plan, m_request.source, m_temporary.path(), m_request.takesReadable),
            m_request.limits.run,
            [&](std::string_view piece) {
                Heard heard = Heard::nothing;
                lines.take(piece, [&](std::string_view line) {
                    heard = m_progress.take(line) ? Heard::progress : heard;
                });
                report(std::chrono::duration<double>(steady_clock::now() - begun).count());
                return isTooLarge() ? Heard::enough : heard;
            },
            m_isCancelled);
        if (run.end == RunEnd::cancelled) {
            return {};
        }
        return failureOfConversion(m_files, m_request.source, run, m_progress.frames,
                                   m_request.takesReadable);
    }

    [[nodiscard]] bool isTooLarge() const {
        const std::chrono::microseconds length = m_request.limits.length;
        return m_progress.microseconds > length.count() ||
               std::cmp_greater(m_progress.bytes, m_request.limits.bytes);
    }

    void report(double elapsed) const {
        const double done = static_cast<double>(m_progress.microseconds) / 1e6;
        const double part = m_plan.seconds > 0 ? std::clamp(done / m_plan.seconds, 0.0, 1.0) : 0;
        m_onProgress(static_cast<int>(part * 100), secondsLeft(part, elapsed));
    }

    ImportFailure verify() {
        m_survey = theora::surveyClip(m_temporary.path(), m_files, m_isCancelled);
        const std::string details = std::to_string(m_survey.frameCount) + " frames";
        if (!m_survey.isDecodable || m_survey.frameCount <= 0) {
            const bool isEmpty = m_progress.frames == 0;
            return {isEmpty ? Failure::noPicture : Failure::stopped, 0, {}, details};
        }
        if (m_survey.frameCount < m_progress.frames &&
            theora::extendClip(m_temporary.path(), m_progress.frames, m_files, m_isCancelled)) {
            m_survey.frameCount = static_cast<int>(m_progress.frames);
        }
        if (!theora::decodesToItsEnd(m_temporary.path(), m_files, m_isCancelled)) {
            return {Failure::stopped, 0, {}, details};
        }
        if (!m_request.takesReadable && isShort()) {
            return {Failure::cut, 0, {}, details};
        }
        return {};
    }

    /// Whether the clip has clearly fewer frames than the file's headers promise.
    [[nodiscard]] bool isShort() const {
        if (m_plan.seconds <= 0) {
            return false;
        }
        const double expected = m_plan.seconds * m_plan.rate.value();
        // In these, the length is an estimate.
        const bool isVague = m_source.format.starts_with("mpeg");
        const double tolerance =
            isVague ? expected * 0.05 + m_plan.rate.value() : std::max(2.5, expected * 0.01);
        return m_survey.frameCount < expected - tolerance;
    }

    JobResult finish() {
        const std::string baseName = freeName(m_files, m_request.folder, m_baseName);
        const std::string base = m_request.folder + baseName;
        int error = 0;
        if (baseName.empty() || !sync(error)) {
            return fail({Failure::notWritable, 0, {}, m_files.errorText(error)});
        }
        core::UnfinishedFile shapes(m_files, base + "-ZoneInfo.bin");
        core::UnfinishedFile names(m_files, base + "-ZoneInfo.xml");
        if (m_request.kind == ImportKind::remake) {
            if (ImportFailure failure = takeZones(base, shapes, names);
                failure.kind != Failure::none) {
                return fail(std::move(failure));
            }
        }
        const auto info = m_files.info(m_temporary.path());
        if (!info || !m_files.replaceFile(m_temporary.path(), base + kExtension, error)) {
            return fail({Failure::notWritable, 0, {}, m_files.errorText(error)});
        }
        for (core::UnfinishedFile* file : {&m_temporary, &shapes, &names}) {
            file->keep();
        }
        m_files.syncFolder(m_request.folder);
        JobResult result{ImportState::done};
        result.clip = {baseName + kExtension,    info->size,
                       m_survey.hasSound,        m_survey.frameCount,
                       m_survey.framesPerSecond, {m_survey.width, m_survey.height}};
        return result;
    }

    bool sync(int& error) {
        const auto stream = m_files.open(m_temporary.path(), OpenMode::writeInPlace, error);
        if (!stream) {
            return false;
        }
        const bool isGood = stream->sync() && stream->close();
        error = stream->lastError();
        return isGood;
    }

    ImportFailure takeZones(const std::string& base, core::UnfinishedFile& shapes,
                            core::UnfinishedFile& names) {
        const theora::ClipSurvey old = theora::surveyClip(m_request.source, m_files, m_isCancelled);
        const std::string oldBase = core::withoutExtension(m_request.source);
        const bool hasZones = m_files.info(oldBase + "-ZoneInfo.xml").has_value() ||
                              m_files.info(oldBase + "-ZoneInfo.bin").has_value();
        if (!hasZones) {
            return {};
        }
        // A clip that cannot be decoded at all has no frames to differ from.
        const bool isKnown = old.isDecodable && old.frameCount >= 0;
        if (isKnown && old.frameCount != m_survey.frameCount) {
            return {Failure::framesDiffer};
        }
        shapes.watch();
        names.watch();
        const platform::Size picture = m_source.video->coded;
        const ZoneCopy copy = copyZones(
            oldBase, base, m_plan.framing,
            platform::Rect::at(old.pictureX, old.pictureY, picture.width, picture.height));
        return copy == ZoneCopy::failed ? ImportFailure{Failure::zonesFailed} : ImportFailure{};
    }

    FileSystem& m_files;
    const JobRequest& m_request;
    const ProgressSink& m_onProgress;
    const std::function<bool()>& m_isCancelled;
    core::UnfinishedFile m_temporary;
    Source m_source;
    Plan m_plan;
    ConverterProgress m_progress;
    theora::ClipSurvey m_survey;
    std::string m_baseName; ///< without the number that may be added
};

} // namespace

JobResult runImport(FileSystem& files, const JobRequest& request, const ProgressSink& onProgress,
                    const std::function<bool()>& isCancelled) {
    return Job(files, request, onProgress, isCancelled).run();
}

} // namespace imports
