// The time of day for people to read.
#pragma once

#include <string>

namespace platform {

class Clock {
public:
    virtual ~Clock() = default;
    /// Local time as "03:07:41 PM": 12 hours, two digits each.
    [[nodiscard]] virtual std::string localTimeText() = 0;
};

Clock& nativeClock();

} // namespace platform
