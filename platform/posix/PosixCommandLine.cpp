#include <string>

#include "platform/CommandLine.h"

namespace platform {

std::string commandLine(int count, const char* const* arguments) {
    std::string line;
    for (int i = 1; i < count; ++i) {
        line += (i > 1 ? " " : "") + std::string(arguments[i]);
    }
    return line;
}

} // namespace platform
