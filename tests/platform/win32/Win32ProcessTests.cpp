#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include <windows.h>

#include <gtest/gtest.h>

#include "platform/ChildProcess.h"
#include "platform/Process.h"
#include "platform/win32/Handles.h"
#include "platform/win32/Win32Path.h"
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

TEST_F(Win32ProcessTest, AChildStartsOnceItsProgramIsNoLongerHeld) {
    const std::string path = m_folder.path() + "child.exe";
    support::writeBytes("child.exe", support::readBytes(CHILD_PROGRAM));
    platform::win32::UniqueFile held(CreateFileW(platform::win32::widePath(path).c_str(),
                                                 GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0,
                                                 nullptr));
    ASSERT_TRUE(held);
    int error = 0;
    EXPECT_FALSE(platform::startChild({path, {}}, error));
    EXPECT_EQ(error, ERROR_SHARING_VIOLATION);
    const std::jthread release([&held] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        held.reset();
    });
    EXPECT_TRUE(platform::startChild({path, {}}, error)) << error;
}

} // namespace
