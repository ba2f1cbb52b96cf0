#include "app/services/CommandLine.h"

#include <algorithm>
#include <vector>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

namespace app {
namespace {

constexpr const char* kVersion = "quorvel " QUORVEL_VERSION "\n";
constexpr const char* kHelp =
    "Usage: quorvel [TOKEN]...\n"
    "Create and edit interactive training scenes made of branching videos.\n"
    "\n"
    "Without --help or --version, open the editor on the scenes in the folder it works in.\n"
    "Tokens that are not listed here are ignored.\n"
    "\n"
    "Tokens:\n"
    "  Launcher          start the product's menu program at the end\n"
    "  SecondaryMonitor  accepted, without effect\n"
    "  TestMode          accepted, without effect\n"
    "\n"
    "Options:\n"
    "  --help            show this text and exit\n"
    "  --version         show the version and exit\n"
    "\n"
    "Exit status: 0 after a normal end, 1 when the editor could not start.\n";

std::vector<std::string> tokensOf(const std::string& commandLine) {
    std::vector<std::string> tokens;
    boost::algorithm::split(tokens, commandLine, boost::algorithm::is_any_of(" "),
                            boost::algorithm::token_compress_on);
    return tokens;
}

} // namespace

std::uint32_t parseCommandLine(const std::string& commandLine) {
    std::uint32_t flags = 0;
    for (const std::string& token : tokensOf(commandLine)) {
        if (token == "Launcher") {
            flags |= kLauncherFlag;
        } else if (token == "SecondaryMonitor") {
            flags |= kSecondaryMonitorFlag;
        } else if (token == "TestMode") {
            flags |= kTestModeFlag;
        }
    }
    return flags;
}

std::string requestedText(const std::string& commandLine) {
    if (parseCommandLine(commandLine) != 0) {
        return {};
    }
    const std::vector<std::string> tokens = tokensOf(commandLine);
    const auto isGiven = [&](const char* option) {
        return std::find(tokens.begin(), tokens.end(), option) != tokens.end();
    };
    return isGiven("--help") ? kHelp : isGiven("--version") ? kVersion : "";
}

} // namespace app
