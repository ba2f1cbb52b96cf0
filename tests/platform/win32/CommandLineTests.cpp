#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "platform/CommandLine.h"
#include "platform/win32/ProgramName.h"

TEST(Win32CommandLine, StandsAsTypedBehindTheProgramsName) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"\"C:\\a b\\Quorvel.exe\"  Launcher \"TestMode\" ", L"Launcher \"TestMode\" "},
        {L"Quorvel.exe\tLauncher", L"Launcher"},
        {L"C:\\\"a b\"\\Quorvel.exe x", L"x"},
        {L"\"Quorvel.exe", L""},
        {L"Quorvel.exe", L""},
        {L"", L""},
    };
    for (const auto& [line, rest] : cases) {
        EXPECT_EQ(platform::win32::withoutProgramName(line), rest) << line;
    }
    EXPECT_EQ(platform::commandLine(0, nullptr).find("platform_tests.exe"), std::string::npos);
}
