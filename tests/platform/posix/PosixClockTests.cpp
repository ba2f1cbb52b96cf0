#include <cstdlib>
#include <ctime>
#include <string>

#include <gtest/gtest.h>

#include "platform/Clock.h"

namespace {

/// "hh:mm:ss AM|PM" of a second since 1970 in a language that has a text for the half of the day.
std::string expected(std::time_t second) {
    char text[16];
    std::strftime(text, sizeof text, "%I:%M:%S %p", std::gmtime(&second));
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
        EXPECT_EQ(text, expected(before + shift * 3600)) << shift;
    }
    ::unsetenv("TZ");
    ::tzset();
}

} // namespace
