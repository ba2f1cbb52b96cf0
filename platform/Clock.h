// The time: as a number to compare, and in parts and as text for people to read.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// A moment by the calendar and the clock on the wall.
struct LocalTime {
    int year = 1970;
    int month = 1; ///< from 1
    int day = 1;
    int hour = 0; ///< 0 to 23
    int minute = 0;
    int second = 0;

    friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

/// Any thread.
class Clock {
public:
    virtual ~Clock() = default;
    /// Seconds since the beginning of 1970, UTC.
    [[nodiscard]] virtual std::int64_t now() = 0;
    /// That moment where the user lives; the beginning of 1970 for one that the system cannot tell.
    [[nodiscard]] virtual LocalTime localTime(std::int64_t time) = 0;
    /// Milliseconds since some moment in the past: for intervals, as nobody can set it.
    [[nodiscard]] virtual std::int64_t ticks() = 0;
    /// Local time as "03:07:41 PM": 12 hours, two digits each.
    [[nodiscard]] virtual std::string localTimeText() = 0;
};

Clock& nativeClock();

} // namespace platform
