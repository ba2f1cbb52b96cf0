#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "app/services/Launcher.h"
#include "core/Services.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RecordingProcess.h"
#include "tests/support/TempFolder.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

/// The working folder is product/bin/editor, three levels below a temporary folder.
class LauncherTest : public support::TempFolderTest {
protected:
    LauncherTest() {
        support::makeFolder("product/bin/editor");
        (void)m_files.setCurrentFolder("product/bin/editor");
    }

    /// The programs that a hand-off tried to start, relative to the temporary folder.
    std::vector<std::string> handOff() {
        m_process.requests.clear();
        app::handOffToLauncher();
        const std::string root = fs::path(m_folder.path()).generic_string();
        std::vector<std::string> programs;
        for (const platform::LaunchRequest& request : m_process.requests) {
            const std::string program = fs::path(request.program).generic_string();
            EXPECT_EQ(fs::path(request.workingFolder).generic_string(),
                      program.substr(0, program.rfind('/') + 1));
            EXPECT_EQ(request.arguments, "");
            programs.push_back(program.substr(root.size()));
        }
        return programs;
    }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    support::RecordingProcess m_process;
    core::ServicesOverride m_services{{&m_files, &platform::nativeClock(), &m_process}};
    support::LogCapture m_log;
};

using Programs = std::vector<std::string>;

TEST_F(LauncherTest, TheFirstExistingSettingsFileIsTheOnlyOneRead) {
    EXPECT_EQ(handOff(), Programs{});
    support::writeBytes("../Settings/Launcher.ini", "../near.exe");
    EXPECT_EQ(handOff(), Programs{"product/bin/near.exe"});
    support::writeBytes("../../Settings/Launcher.ini", "../../middle.exe");
    EXPECT_EQ(handOff(), Programs{"product/middle.exe"});
    support::makeFolder("../../../Settings/Launcher.ini");
    EXPECT_EQ(handOff(), Programs{"product/middle.exe"}) << "a folder of that name is skipped";
    support::writeBytes("../../Settings/Launcher.ini", "");
    EXPECT_EQ(handOff(), Programs{}) << "an empty file does not lead to the next";
    support::writeBytes("../../Settings/Launcher.ini", "../../middle.exe");
    m_files.failOn("open", EACCES);
    EXPECT_EQ(handOff(), Programs{}) << "nor does one that cannot be opened";
    m_files.setRule(
        [](const support::Call& call) {
            return call.operation == "read" ? support::Fault::shorten : support::Fault::none;
        },
        EIO);
    EXPECT_EQ(handOff(), Programs{}) << "or not be read whole";
}

TEST_F(LauncherTest, TheTextIsThePathUpToAZeroByteAndWithoutBlanksAtItsEnd) {
    const std::pair<std::string, Programs> cases[] = {
        {"a b/menu.exe", {"product/bin/editor/a b/menu.exe"}},
        {"menu.exe \t\n\r\n", {"product/bin/editor/menu.exe"}},
        {"menu.exe\0other"s, {"product/bin/editor/menu.exe"}},
        {"..\\..\\x\\.\\menu.exe", {"product/x/menu.exe"}},
        {" menu.exe", {"product/bin/editor/ menu.exe"}},
        {"line\nmenu.exe", {"product/bin/editor/line\nmenu.exe"}},
        {"\0menu.exe"s, {}},
        {"\r\n", {}},
        {"menu.exe\0"s + std::string(65537, 'x'), {"product/bin/editor/menu.exe"}},
        {"menu.exe" + std::string(65537, ' ') + "x", {}},
    };
    for (const auto& [text, programs] : cases) {
        support::writeBytes("../Settings/Launcher.ini", text);
        EXPECT_EQ(handOff(), programs) << text.substr(0, 40);
    }
}

TEST_F(LauncherTest, OnlyAFailedLaunchFallsBackToTheFixedPlaces) {
    support::writeBytes("../Settings/Launcher.ini", "menu.exe");
    support::writeBytes("../../Vemora.exe", "");
    support::writeBytes("../../Brimwick/Vemora.exe", "");
    EXPECT_EQ(handOff(), Programs{"product/bin/editor/menu.exe"});
    m_process.succeeds = false;
    EXPECT_EQ(handOff(), (Programs{"product/bin/editor/menu.exe", "product/Vemora.exe"}))
        << "the second place is not tried when the first exists";
    int error = 0;
    m_files.removeFile("../../Vemora.exe", error);
    support::makeFolder("../../Vemora.exe");
    EXPECT_EQ(handOff(), (Programs{"product/bin/editor/menu.exe", "product/Brimwick/Vemora.exe"}));
    m_files.removeFile("../Settings/Launcher.ini", error);
    EXPECT_EQ(handOff(), Programs{"product/Brimwick/Vemora.exe"});
    EXPECT_EQ(m_log.errors(), std::vector<std::string>{});
}

TEST_F(LauncherTest, AFullPathOfMoreThan259CharactersIsNotStarted) {
    const std::size_t folder = m_files.fullPath("m").size() - 1;
    std::string name;
    for (std::size_t i = folder; i < 259; ++i) {
        name += "\xC3\xA9"; // two bytes, one character
    }
    EXPECT_TRUE(app::launch(name, "a b", "elsewhere"));
    EXPECT_FALSE(app::launch(name + "m", "", ""));
    ASSERT_EQ(m_process.requests.size(), 1U);
    EXPECT_EQ(m_process.requests[0].arguments, "a b");
    EXPECT_EQ(m_process.requests[0].workingFolder, "elsewhere");
}

} // namespace
