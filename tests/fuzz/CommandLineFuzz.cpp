// Any bytes as the command line and as the launcher's settings file.
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/services/CommandLine.h"
#include "app/services/Launcher.h"
#include "tests/fuzz/FuzzServices.h"
#include "tests/fuzz/Require.h"

namespace {

using fuzz::require;

/// The flags by a search of its own: a token stands between blanks or the ends.
std::uint32_t searchedFlags(const std::string& line) {
    const std::string padded = " " + line + " ";
    std::uint32_t flags = 0;
    flags |= padded.find(" TestMode ") != std::string::npos ? app::kTestModeFlag : 0;
    flags |= padded.find(" Launcher ") != std::string::npos ? app::kLauncherFlag : 0;
    flags |=
        padded.find(" SecondaryMonitor ") != std::string::npos ? app::kSecondaryMonitorFlag : 0;
    return flags;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    require(app::parseCommandLine(text) == searchedFlags(text));

    fuzz::Services services;
    services.files.folders.insert("/Settings");
    services.files.files["/Settings/Launcher.ini"] = text;
    app::handOffToLauncher();
    for (const platform::LaunchRequest& request : services.process.requests) {
        require(request.program.rfind(request.workingFolder, 0) == 0);
        require(request.program.find('\0') == std::string::npos);
    }
    return 0;
}
