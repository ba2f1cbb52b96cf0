#include <cstddef>
#include <optional>
#include <ostream>
#include <string>

#include "core/FileError.h"
#include "core/Numbers.h"
#include "platform/Geometry.h"
#include "tools/inspect/Command.h"
#include "tools/inspect/CvatCommand.h"
#include "tools/inspect/Json.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneShape.h"

namespace inspect {
namespace {

constexpr int kMaxFrames = 10'000'000; // over four days of video
constexpr const char* kFrameRule = "the number of frames is 0 or more, at most 10000000";

std::optional<int> wholeNumber(const std::string& text) {
    const std::optional<int> number = core::parseNumber<int>(text);
    return number && *number >= 0 ? number : std::nullopt;
}

/// "WxH", both above 0.
std::optional<platform::Size> sizeFrom(const std::string& text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos) {
        return std::nullopt;
    }
    const std::optional<int> width = wholeNumber(text.substr(0, cross));
    const std::optional<int> height = wholeNumber(text.substr(cross + 1));
    return width.value_or(0) > 0 && height.value_or(0) > 0
               ? std::optional(platform::Size{*width, *height})
               : std::nullopt;
}

/// Default display: the editor's usual picture area; default video: as large as the display, so
/// that the scale is 1.
std::optional<zone::Scale> scaleFrom(const std::string& display, const std::string& video) {
    const auto shown = sizeFrom(display.empty() ? "1280x720" : display);
    const auto stored = video.empty() ? shown : sizeFrom(video);
    return shown && stored ? zone::scaleBetween(*shown, *stored) : std::nullopt;
}

void printFrame(Json& json, const zone::Zone& zone, int frame) {
    const std::optional<zone::ZoneShape> shape = zone.shape(frame);
    json.beginObject();
    json.key("active").value(!shape || shape->active);
    json.key("points").beginArray();
    if (shape) {
        for (const platform::Point& point : shape->points) {
            json.beginArray().value(point.x).value(point.y).endArray();
        }
    }
    json.endArray();
    json.endObject();
}

void printZones(Json& json, const zone::ZoneManager& manager) {
    json.beginObject();
    json.key("videoWidth").value(manager.videoWidth);
    json.key("videoHeight").value(manager.videoHeight);
    json.key("zones").beginArray();
    for (int index = 0; index < manager.zoneCount(); ++index) {
        const zone::Zone& zone = *manager.zone(index);
        json.beginObject();
        json.key("name").value(zone.name());
        json.key("frames").beginArray();
        for (int frame = 0; frame < zone.frameCount(); ++frame) {
            printFrame(json, zone, frame);
        }
        json.endArray();
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

/// With --export or --import taken out of the arguments.
int exchange(const Arguments& arguments, bool isImport, const std::string& format,
             const std::string& video, const std::string& frames) {
    if (format != "cvat") {
        return badUsage("zones", "the format \"" + format + "\" is unknown");
    }
    if (arguments.size() != 2 || arguments[0].empty() || arguments[1].empty()) {
        return badUsage("zones", "one base path and one file are needed");
    }
    const std::optional<platform::Size> size = sizeFrom(video);
    const std::optional<int> count = wholeNumber(frames);
    if (!video.empty() && !size) {
        return badUsage("zones", "a size is written as WIDTHxHEIGHT");
    }
    if (!frames.empty() && (!count || *count > kMaxFrames)) {
        return badUsage("zones", kFrameRule);
    }
    return runCvat({arguments[0], arguments[1], isImport, size, count});
}

} // namespace

int runZones(const Arguments& given, std::ostream& out) {
    Arguments arguments = given;
    std::string display;
    std::string video;
    std::string frames;
    std::string rewriteBase;
    std::string exported;
    std::string imported;
    if (!takeOption(arguments, "--export", exported) ||
        !takeOption(arguments, "--import", imported) || (!exported.empty() && !imported.empty())) {
        return badUsage("zones", "a format is needed: cvat");
    }
    if (!takeOption(arguments, "--display", display) || !takeOption(arguments, "--video", video) ||
        !takeOption(arguments, "--frames", frames) ||
        !takeOption(arguments, "--rewrite", rewriteBase)) {
        return badUsage("zones", "one base path is needed");
    }
    if (!exported.empty() || !imported.empty()) {
        return exchange(arguments, !imported.empty(), exported + imported, video, frames);
    }
    if (arguments.size() != 1 || arguments.front().empty()) {
        return badUsage("zones", "one base path is needed");
    }
    const std::optional<zone::Scale> scale = scaleFrom(display, video);
    if (!scale) {
        return badUsage("zones", "a size is written as WIDTHxHEIGHT");
    }
    const std::optional<int> frameCount =
        frames.empty() ? zone::kStoredFrameCount : wholeNumber(frames);
    if (!frameCount || *frameCount > kMaxFrames) {
        return badUsage("zones", kFrameRule);
    }

    const auto manager = zone::ZoneManager::create(arguments.front(), *frameCount, true, scale);
    if (!manager) {
        return kUnreadable;
    }
    Json json(out);
    printZones(json, *manager);
    out << '\n';
    const bool good =
        rewriteBase.empty() || (manager->saveAs(rewriteBase) && manager->lastSaveFailure().empty());
    return good ? kSuccess : kUnreadable;
}

} // namespace inspect
