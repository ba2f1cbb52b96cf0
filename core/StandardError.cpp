#include "core/StandardError.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace core {
namespace {

constexpr std::size_t kMaxBytes = std::size_t{1} << 20; // longer than any of our messages

} // namespace

void writeStandardError(std::string_view line) noexcept {
    // One call, so that lines of several threads do not mix; a failure cannot be handled.
    const int length = static_cast<int>(std::min(line.size(), kMaxBytes));
    (void)std::fprintf(stderr, "%.*s\n", length, line.data());
}

} // namespace core
