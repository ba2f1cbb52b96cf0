// A stopped clock, so that log pages can be compared byte for byte and days pass when a test says.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>

#include "platform/Clock.h"

namespace support {

class FixedClock final : public platform::Clock {
public:
    [[nodiscard]] std::int64_t now() override { return time; }
    [[nodiscard]] std::int64_t ticks() override { return passed; }
    /// UTC wherever the tests run, an hour ahead until the summer ends; Gregorian dates of 1970 and
    /// later.
    [[nodiscard]] platform::LocalTime localTime(std::int64_t seconds) override {
        seconds += seconds < summerEnd ? 60 * 60 : 0;
        using std::chrono::floor;
        const std::chrono::sys_seconds moment{std::chrono::seconds(seconds)};
        const auto midnight = floor<std::chrono::days>(moment);
        const std::chrono::year_month_day day(midnight);
        const std::chrono::hh_mm_ss clock(moment - midnight);
        return {static_cast<int>(day.year()),
                static_cast<int>(static_cast<unsigned>(day.month())),
                static_cast<int>(static_cast<unsigned>(day.day())),
                static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count())};
    }
    [[nodiscard]] std::string localTimeText() override { return text; }

    std::int64_t time = 1'700'000'000; ///< 14 November 2023, 22:13:20
    std::int64_t summerEnd = 0;
    std::atomic<std::int64_t> passed{0}; ///< milliseconds; any thread may read it
    std::string text = "03:07:41 PM";
};

} // namespace support
