#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <ostream>
#include <string>
#include <utility>

#include "core/Paths.h"
#include "core/Services.h"
#include "core/StandardError.h"
#include "import/Converter.h"
#include "import/ImportJob.h"
#include "import/ImportTypes.h"
#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "tools/inspect/Command.h"
#include "tools/inspect/Json.h"

namespace inspect {
namespace {

constexpr std::array<std::pair<const char*, imports::Quality>, 3> kQualities{
    std::pair{"small", imports::Quality::small}, std::pair{"standard", imports::Quality::standard},
    std::pair{"high", imports::Quality::high}};

std::atomic<bool> isInterrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void interrupt(int /*signal*/) {
    isInterrupted = true;
}

struct Options {
    imports::JobRequest request{};
    bool isJson = false;
};

/// What is wrong with the arguments; empty if nothing. Takes the options out of them.
std::string readOptions(Arguments& arguments, Options& options) {
    std::string quality = "standard";
    std::string converter;
    std::string folder;
    if (!takeOption(arguments, "--into", folder) || folder.empty()) {
        return "--into needs a folder";
    }
    if (!takeOption(arguments, "--quality", quality)) {
        return "--quality needs a value";
    }
    if (!takeOption(arguments, "--converter", converter)) {
        return "--converter needs a path";
    }
    const auto* const chosen =
        std::find_if(kQualities.begin(), kQualities.end(),
                     [&](const auto& known) { return known.first == quality; });
    if (chosen == kQualities.end()) {
        return "unknown quality \"" + quality + "\"";
    }
    platform::FileSystem& files = *core::services().fileSystem;
    options.request.settings = {chosen->second, !takeFlag(arguments, "--no-sound")};
    options.request.takesFreeName = takeFlag(arguments, "--keep-both");
    options.request.takesReadable = takeFlag(arguments, "--readable");
    options.isJson = takeFlag(arguments, "--json");
    options.request.folder = core::withSeparator(files.fullPath(folder));
    if (!converter.empty()) {
        converter = files.fullPath(converter);
    }
    imports::ConverterPlaces places = imports::usualPlaces(files, converter);
    places.forbidden.push_back(options.request.folder);
    options.request.converter = imports::findConverter(files, places);
    if (arguments.empty() || std::find(arguments.begin(), arguments.end(), "") != arguments.end()) {
        return "a file is needed";
    }
    return {};
}

const char* stateName(imports::ImportState state) {
    return state == imports::ImportState::done        ? "done"
           : state == imports::ImportState::cancelled ? "cancelled"
                                                      : "failed";
}

void printLine(std::ostream& out, const std::string& source, const imports::JobResult& result) {
    const imports::ImportedClip& clip = result.clip;
    Json json(out);
    json.beginObject();
    json.key("source").value(source);
    json.key("file").value(clip.name);
    json.key("frames").value(clip.frameCount);
    json.key("fps").value(clip.framesPerSecond);
    json.key("width").value(clip.frame.width);
    json.key("height").value(clip.frame.height);
    json.key("sound").value(clip.hasSound);
    json.key("bytes").value(static_cast<std::int64_t>(clip.bytes));
    json.key("state").value(stateName(result.state));
    json.key("reason").value(imports::failureWord(result.failure.kind));
    json.key("text").value(imports::failureText(result.failure));
    json.key("details").value(result.failure.details);
    json.endObject();
    out << '\n' << std::flush;
}

void printText(std::ostream& out, const std::string& source, const imports::JobResult& result) {
    if (result.state == imports::ImportState::done) {
        const imports::ImportedClip& clip = result.clip;
        out << source << ": " << clip.name << ", " << clip.frameCount << " frames, "
            << clip.frame.width << " x " << clip.frame.height
            << (clip.hasSound ? ", with sound" : ", without sound") << std::endl;
        return;
    }
    std::string line = source + ": ";
    line += result.state == imports::ImportState::cancelled
                ? "Cancelled"
                : "Not converted: " + imports::failureText(result.failure);
    if (!result.failure.details.empty()) {
        line += " (" + result.failure.details + ")";
    }
    core::writeStandardError(line);
}

} // namespace

int runImport(const Arguments& arguments, std::ostream& out) {
    Arguments rest = arguments;
    Options options;
    if (const std::string problem = readOptions(rest, options); !problem.empty()) {
        return badUsage("import", problem);
    }
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    platform::FileSystem& files = *core::services().fileSystem;
    int code = options.request.converter.isFound() ? kSuccess : kUnreadable;
    for (const std::string& source : rest) {
        options.request.source = files.fullPath(source);
        imports::JobResult result{imports::ImportState::cancelled};
        if (!isInterrupted) {
            result = imports::runImport(
                files, options.request, [](int, double) {}, [] { return isInterrupted.load(); });
        }
        if (options.isJson) {
            printLine(out, source, result);
        } else {
            printText(out, source, result);
        }
        if (result.state != imports::ImportState::done) {
            code = std::max(code, kFindings);
        }
    }
    return code;
}

} // namespace inspect
