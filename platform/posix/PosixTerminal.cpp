#include <cstdio>
#include <string_view>

#include "platform/Terminal.h"

namespace platform {

bool printToTerminal(std::string_view text) noexcept {
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
           std::fflush(stdout) == 0;
}

} // namespace platform
