// An executable's memory that runs out when a test wants it to. For RefusedMemory.cpp, which
// replaces operator new, among the sources of the executable. Not for the thread sanitizer, whose
// runtime has an operator new of its own.
#pragma once

#include <atomic>
#include <cstddef>

namespace support {

inline std::atomic<int> allocationsLeft = -1;     ///< the one after so many is refused; < 0: none
inline std::atomic<std::size_t> refusedBytes = 0; ///< so is the next one of this size; 0: of none
inline std::atomic<int> allowedOfSize = 0;        ///< so many of refusedBytes are not refused yet
inline std::atomic<std::size_t> lastBytes = 0;    ///< of the latest allocation

} // namespace support
