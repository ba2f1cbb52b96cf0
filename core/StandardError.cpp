#include "core/StandardError.h"

#include <cstdio>

namespace core {

void tellStandardError(const std::string& line) noexcept {
    // One call, so that lines of several threads do not mix; nothing can be done about a failure.
    (void)std::fprintf(stderr, "%s\n", line.c_str());
}

} // namespace core
