#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "platform/Process.h"
#include "tests/support/TempFolder.h"

namespace {

class Win32ProcessTest : public support::TempFolderTest {
protected:
    /// What the started program left behind; waits for it, at most ten seconds.
    static std::string waitFor(const std::string& path) {
        for (int round = 0; round < 1000; ++round) {
            // Whole once its line has ended.
            if (support::exists(path) && support::readBytes(path).ends_with("end\r\n")) {
                return support::readBytes(path);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return {};
    }
};

TEST_F(Win32ProcessTest, StartsAProgramWithItsArgumentsInItsFolder) {
    const char* shell = std::getenv("COMSPEC");
    ASSERT_NE(shell, nullptr);
    support::makeFolder("a b");
    const std::string folder = m_folder.path() + "a b";
    ASSERT_TRUE(
        platform::nativeProcess().launch({shell, "/c echo one  two end> report.txt", folder}));
    EXPECT_EQ(waitFor("a b/report.txt"), "one  two end\r\n");
}

TEST_F(Win32ProcessTest, WhatCannotRunIsAFailure) {
    support::writeBytes("text.exe", "no program");
    for (const std::string& program :
         {m_folder.path() + "missing.exe", m_folder.path() + "text.exe", std::string()}) {
        EXPECT_FALSE(platform::nativeProcess().launch({program, "", m_folder.path()})) << program;
    }
}

} // namespace
