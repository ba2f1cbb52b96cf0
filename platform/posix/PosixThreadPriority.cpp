#include <sys/resource.h>

#include "platform/ThreadPriority.h"

namespace platform {

void lowerThreadPriority() noexcept {
    constexpr int kNice = 10;
    // On Linux this is about the calling thread alone.
    (void)::setpriority(PRIO_PROCESS, 0, kNice);
}

} // namespace platform
