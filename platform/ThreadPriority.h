// How much of the processor a thread gets when others want it too.
#pragma once

namespace platform {

/// Lets every thread of normal priority go before the calling one, for good. A system that refuses
/// leaves the thread as it is.
void lowerThreadPriority() noexcept;

} // namespace platform
