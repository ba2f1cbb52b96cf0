// The program's entry point. Returns what app::runProgram returns.
#include <cstdlib>
#include <string>

#include "app/Program.h"
#include "app/services/CommandLine.h"
#include "app/services/StartFolder.h"
#include "app/services/StartProblem.h"
#include "core/Log.h"
#include "platform/CommandLine.h"
#include "platform/DebugLine.h"
#include "platform/Environment.h"
#include "platform/Gui.h"
#include "platform/ProgramFolder.h"
#include "platform/Terminal.h"
#include "src/TheoraLog.h"

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Where the program works, or what its start script could not prepare.
app::StartFolder startFolder() {
    if (const char* problem = std::getenv("QUORVEL_START_PROBLEM")) {
        return {false,
                app::scriptProblem(variable("QUORVEL_START_FOLDER"), variable("QUORVEL_INSTALLED"),
                                   problem),
                {}};
    }
    return app::enterStartFolder(platform::programFolder(), platform::userFolders());
}

} // namespace

int main(int argc, char** argv) {
    const std::string commandLine = platform::commandLine(argc, argv);
    // Before anything else, as this is asked for in any folder: no log page, no other folder.
    if (const std::string text = app::requestedText(commandLine); !text.empty()) {
        return platform::printToTerminal(text) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    const app::StartFolder folder = startFolder();
    if (!folder.isOurs) {
        core::Log::useStandardErrorOnly();
    }
    // Made before anything can fail, so that every run leaves its own log page.
    core::Log::get();
    // Worker threads write these lines; the log page is the main thread's alone.
    theora::setLogHook(platform::writeDebugLine);
    const int exitCode =
        folder.problem.empty()
            ? app::runProgram(commandLine, platform::createGui, folder.installation)
            : app::refuseToStart(folder.problem, platform::createGui);
    core::Log::release();
    return exitCode;
}
