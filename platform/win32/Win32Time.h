// The system's times and the seconds since 1970 that the interfaces use.
#pragma once

#include <cstdint>

#include <windows.h>

namespace platform::win32 {

// The system counts tenths of microseconds since 1601.
inline constexpr std::int64_t kTicksPerSecond = 10'000'000;
inline constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;

[[nodiscard]] inline std::int64_t ticksOf(const FILETIME& time) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(time.dwHighDateTime) << 32U |
                                     time.dwLowDateTime);
}

[[nodiscard]] inline std::int64_t secondsSince1970(const FILETIME& time) {
    return ticksOf(time) / kTicksPerSecond - kSecondsTo1970;
}

[[nodiscard]] inline std::int32_t nanosecondsOf(const FILETIME& time) {
    return static_cast<std::int32_t>(ticksOf(time) % kTicksPerSecond) * 100;
}

[[nodiscard]] inline FILETIME fileTime(std::int64_t secondsSince1970) {
    const auto ticks =
        (static_cast<std::uint64_t>(secondsSince1970) + kSecondsTo1970) * kTicksPerSecond;
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32U)};
}

} // namespace platform::win32
