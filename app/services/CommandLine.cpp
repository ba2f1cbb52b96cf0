#include "app/services/CommandLine.h"

#include <vector>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

namespace app {

std::uint32_t parseCommandLine(const std::string& commandLine) {
    std::vector<std::string> tokens;
    boost::algorithm::split(tokens, commandLine, boost::algorithm::is_any_of(" "),
                            boost::algorithm::token_compress_on);
    std::uint32_t flags = 0;
    for (const std::string& token : tokens) {
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

} // namespace app
