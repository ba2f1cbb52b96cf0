// How much of the processor a thread gets when others want it too.
#pragma once

namespace platform {

/// Permanently lowers the priority of the calling thread below normal. A system that refuses
/// leaves the thread as it is.
void lowerThreadPriority() noexcept;

} // namespace platform
