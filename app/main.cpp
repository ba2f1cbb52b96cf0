// The program's entry point. Returns what app::runProgram returns.
#include "app/Program.h"
#include "core/Log.h"
#include "platform/CommandLine.h"
#include "platform/DebugLine.h"
#include "src/TheoraLog.h"

int main(int argc, char** argv) {
    // Made first thing, so that every run leaves its own log page.
    core::Log::get();
    // Worker threads write these lines; the log page is the main thread's alone.
    theora::setLogHook(platform::writeDebugLine);
    const int exitCode = app::runProgram(platform::commandLine(argc, argv), platform::createGui);
    core::Log::release();
    return exitCode;
}
