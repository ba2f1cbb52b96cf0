#include <gtest/gtest.h>

#include "platform/CommandLine.h"

TEST(PosixCommandLine, ArgumentsAreJoinedWithOneBlank) {
    const char* const arguments[] = {"/usr/bin/TestMode", "Launcher", "a b", "", "TestMode"};
    EXPECT_EQ(platform::commandLine(5, arguments), "Launcher a b  TestMode");
    EXPECT_EQ(platform::commandLine(0, nullptr), "");
}
