#include <windows.h>

#include "platform/ThreadPriority.h"

namespace platform {

void lowerThreadPriority() noexcept {
    (void)SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_BELOW_NORMAL);
}

} // namespace platform
