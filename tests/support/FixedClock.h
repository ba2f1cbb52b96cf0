// A stopped clock, so that log pages can be compared byte for byte.
#pragma once

#include <string>

#include "platform/Clock.h"

namespace support {

class FixedClock final : public platform::Clock {
public:
    [[nodiscard]] std::string localTimeText() override { return text; }

    std::string text = "03:07:41 PM";
};

} // namespace support
