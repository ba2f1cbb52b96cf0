#include <atomic>
#include <csignal>
#include <ostream>
#include <string>

#include "core/Paths.h"
#include "core/Services.h"
#include "core/StandardError.h"
#include "import/Converter.h"
#include "platform/FileSystem.h"
#include "publish/PageText.h"
#include "publish/PublishJob.h"
#include "tools/inspect/Command.h"

namespace inspect {
namespace {

std::atomic<bool> isInterrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void interrupt(int /*signal*/) {
    isInterrupted = true;
}

/// What is wrong with the arguments; empty if nothing.
std::string readOptions(Arguments arguments, publish::PublishRequest& request) {
    platform::FileSystem& files = *core::services().fileSystem;
    publish::PageOptions& options = request.options;
    std::string folder;
    std::string converter;
    if (!takeOption(arguments, "--to", folder) || folder.empty()) {
        return "--to needs a folder";
    }
    if (!takeOption(arguments, "--title", options.title)) {
        return "--title needs a text";
    }
    if (!takeOption(arguments, "--language", options.language)) {
        return "--language needs a language";
    }
    if (!takeOption(arguments, "--converter", converter)) {
        return "--converter needs a path";
    }
    const publish::Language* language = publish::findLanguage(options.language);
    if (language == nullptr) {
        return "unknown language \"" + options.language + "\"";
    }
    options.language = language->code;
    options.hasOutlines = !takeFlag(arguments, "--no-outlines");
    options.hasKeys = !takeFlag(arguments, "--no-keys");
    options.hasReport = takeFlag(arguments, "--report");
    if (arguments.size() != 1 || arguments.front().empty()) {
        return "one folder is needed";
    }
    request.scene = core::withSeparator(files.fullPath(arguments.front()));
    request.folder = files.fullPath(folder);
    imports::ConverterPlaces places =
        imports::usualPlaces(files, converter.empty() ? converter : files.fullPath(converter));
    places.forbidden.push_back(request.scene);
    request.converter = imports::findConverter(files, places);
    return {};
}

} // namespace

int runPublish(const Arguments& arguments, std::ostream& out) {
    publish::PublishRequest request;
    if (const std::string problem = readOptions(arguments, request); !problem.empty()) {
        static_cast<void>(badUsage("publish", problem));
        return kFindings;
    }
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    const publish::PublishResult result = publish::publishScene(
        *core::services().fileSystem, request, [](const publish::PublishProgress&) {},
        [] { return isInterrupted.load(); });
    if (result.state == publish::PublishResult::State::published) {
        out << result.folder << ": " << result.fileCount << " files, " << result.bytes
            << " bytes\n";
        return kSuccess;
    }
    std::string line = "quorvel-inspect: ";
    line += result.state == publish::PublishResult::State::cancelled
                ? "cancelled"
                : "not published: " + publish::publishFailureText(result);
    core::writeStandardError(result.details.empty() ? line : line + " (" + result.details + ")");
    return kFindings;
}

} // namespace inspect
