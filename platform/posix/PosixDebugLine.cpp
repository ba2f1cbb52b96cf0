#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string_view>

#include "platform/DebugLine.h"

namespace platform {

void writeDebugLine(std::string_view text) noexcept {
    constexpr std::size_t kMaxBytes = std::size_t{1} << 20U; // longer than any line of ours
    // One call, so that lines of several threads do not mix.
    (void)std::fprintf(stderr, "%.*s\n", static_cast<int>(std::min(text.size(), kMaxBytes)),
                       text.data());
}

} // namespace platform
