#include "tools/inspect/CvatCommand.h"

#include <array>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "core/File.h"
#include "core/FileError.h"
#include "core/SafeSave.h"
#include "core/Services.h"
#include "core/StandardError.h"
#include "core/WholeFile.h"
#include "platform/FileSystem.h"
#include "src/TheoraException.h"
#include "src/TheoraOutputMode.h"
#include "src/TheoraVideoClip.h"
#include "src/TheoraVideoManager.h"
#include "tools/inspect/Command.h"
#include "tools/inspect/Cvat.h"
#include "zone/LoadReport.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace inspect {
namespace {

constexpr platform::Size kEditorArea{1280, 720};
constexpr std::array kEndings{".ogv", ".ogg"};

int fail(const std::string& message) {
    core::writeStandardError("quorvel-inspect: " + message);
    return kUnreadable;
}

/// Size and length of the video at the base path; none, reported, when it cannot be read.
std::optional<CvatClip> clipAt(const std::string& base) {
    for (const char* ending : kEndings) {
        const std::string path = base + ending;
        if (!core::services().fileSystem->info(path)) {
            continue;
        }
        theora::TheoraVideoManager manager(0); // headers only
        try {
            const theora::TheoraVideoClip& clip =
                *manager.createClip(path, theora::TheoraOutputMode::TH_RGB);
            if (clip.getNumFrames() > 0) {
                return CvatClip{{clip.getWidth(), clip.getHeight()}, clip.getNumFrames()};
            }
            fail(path + ": the number of frames is unknown");
        } catch (const theora::TheoraGenericException& error) {
            fail(error.getMessage());
        }
        return std::nullopt;
    }
    fail("there is no " + base + ".ogv or .ogg: --video and --frames are needed");
    return std::nullopt;
}

std::optional<CvatClip> clipOf(const CvatRequest& request) {
    if (request.size && request.frameCount) {
        return CvatClip{*request.size, *request.frameCount};
    }
    std::optional<CvatClip> clip = clipAt(request.base);
    if (clip) {
        clip->size = request.size.value_or(clip->size);
        clip->frameCount = request.frameCount.value_or(clip->frameCount);
    }
    return clip;
}

int exportZones(const CvatRequest& request, const CvatClip& clip) {
    // In the video's own pixels, and with the frames that the clip does not have.
    const auto zones =
        zone::ZoneManager::create(request.base, zone::kStoredFrameCount, true, zone::Scale{});
    if (!zones) {
        return kUnreadable; // the log says why
    }
    std::ostringstream out;
    std::vector<std::string> losses = writeCvat(out, *zones, clip);
    const std::string text = out.str();
    const zone::LoadReport& report = zones->loadReport();
    if (report.problem == zone::LoadProblem::binaryForeign) {
        losses.emplace_back("parts of the pair that are no zones");
    } else if (report.problem != zone::LoadProblem::none) {
        losses.push_back("parts of the pair that cannot be read; whole zones: " +
                         std::to_string(report.wholeZones) + " of " + std::to_string(report.zones));
    }
    for (const std::string& lost : losses) {
        core::writeStandardError("not in the file: " + lost);
    }
    if (text.size() > kMaxCvatBytes) {
        core::writeStandardError(std::string(kCvatTooLarge) + ", which no import takes");
    }
    core::SafeSave save(core::SafeSave::Failures::silent);
    const bool isWritten = save.open(request.file, "wb") && save.file().writeString(text) &&
                           save.prepare() && save.commit();
    return isWritten ? kSuccess : fail("cannot write " + request.file);
}

int importZones(const CvatRequest& request, const CvatClip& clip) {
    const auto file = core::services().fileSystem->info(request.file);
    if (file && file->size > kMaxCvatBytes) {
        return fail(request.file + ": " + kCvatTooLarge);
    }
    const std::optional<std::string> text = core::readWholeFile(request.file, kMaxCvatBytes);
    if (!text) {
        return fail("cannot read " + request.file);
    }
    const auto result = readCvat(*text, clip);
    if (const auto* problem = std::get_if<CvatProblem>(&result)) {
        const std::string line = problem->line > 0 ? ":" + std::to_string(problem->line) : "";
        return fail(request.file + line + ": " + problem->text);
    }
    // Keeps the editor's picture area of a pair that is there already.
    const auto before = zone::ZoneManager::create(request.base, zone::kStoredFrameCount, false);
    const bool isKnown = before && before->videoWidth > 0 && before->videoHeight > 0;
    const auto zones = zone::ZoneManager::createEmpty();
    if (!zones) {
        return fail("there is no memory");
    }
    zones->videoWidth = isKnown ? before->videoWidth : kEditorArea.width;
    zones->videoHeight = isKnown ? before->videoHeight : kEditorArea.height;
    zones->frameCount = clip.frameCount;
    zones->scale = zone::Scale{};
    addZones(*zones, std::get<std::vector<CvatTrack>>(result), clip);
    const bool isSaved = zones->saveAs(request.base) && zones->lastSaveFailure().empty();
    return isSaved ? kSuccess : kUnreadable;
}

} // namespace

int runCvat(const CvatRequest& request) {
    const std::optional<CvatClip> clip = clipOf(request);
    if (!clip) {
        return kUnreadable;
    }
    return request.isImport ? importZones(request, *clip) : exportZones(request, *clip);
}

} // namespace inspect
