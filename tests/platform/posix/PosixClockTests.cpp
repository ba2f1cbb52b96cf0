#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <gtest/gtest.h>

#include "platform/Clock.h"

namespace {

/// "hh:mm:ss AM|PM" of a second of the day, by arithmetic of its own.
std::string expected(std::time_t secondOfDay) {
    char text[16];
    const int hour = static_cast<int>(secondOfDay / 3600);
    std::snprintf(text, sizeof text, "%02d:%02d:%02d %s", (hour + 11) % 12 + 1,
                  static_cast<int>(secondOfDay / 60 % 60), static_cast<int>(secondOfDay % 60),
                  hour >= 12 ? "PM" : "AM");
    return text;
}

TEST(PosixClock, ShowsEveryHourOfTheDayOnATwelveHourClock) {
    for (int shift = 0; shift < 24; ++shift) {
        ::setenv("TZ", ("QVL-" + std::to_string(shift)).c_str(), 1); // so many hours east
        ::tzset();
        std::string text;
        std::time_t before = 0;
        std::time_t after = 1;
        while (before != after) { // once more when the second changes in between
            before = std::time(nullptr);
            text = platform::nativeClock().localTimeText();
            after = std::time(nullptr);
        }
        EXPECT_EQ(text, expected((before + shift * 3600) % 86400)) << shift;
    }
    ::unsetenv("TZ");
    ::tzset();
}

} // namespace
