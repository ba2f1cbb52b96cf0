// Start-up, exit codes and the hand-off around the screens.
#include "app/Program.h"
#include "core/Services.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RecordingProcess.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/support/windows/ScriptedGui.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

using support::writeBytes;
using Lines = std::vector<std::string>;

/// The program's working directory is two folders deep, as in the product.
class Program : public support::TempFolderTest {
protected:
    Program() {
        const std::filesystem::path data(QUORVEL_DATA_FOLDER);
        support::makeFolder("Programs/Quorvel");
        writeBytes("Settings/Launcher.ini", "Menu.exe");
        std::filesystem::current_path("Programs/Quorvel");
        std::filesystem::copy(data / "UI", "UI", std::filesystem::copy_options::recursive);
        std::filesystem::copy(data / "Translations.ini", "Translations.ini");
    }
    int run(const std::string& commandLine) {
        return app::runProgram(commandLine, [this]() -> std::unique_ptr<platform::Gui> {
            ++m_guis;
            if (!m_hasDisplay) {
                return nullptr;
            }
            auto gui = std::make_unique<test::ScriptedGui>(test::gui());
            gui->library.fails = m_componentsFail;
            gui->loop().post([] { test::WindowDriver(test::topWindow()).click(u"ButtonExit"); });
            return gui;
        });
    }

    support::LogCapture m_log;
    support::RecordingProcess m_process;
    core::ServicesOverride m_override{
        {core::services().fileSystem, core::services().clock, &m_process}};
    bool m_hasDisplay = true;
    bool m_componentsFail = false;
    int m_guis = 0;
};

TEST_F(Program, ExitEndsItWithSuccess) {
    EXPECT_EQ(run(""), 0);
    EXPECT_EQ(m_log.errors(), Lines());
    EXPECT_TRUE(m_process.requests.empty());
}

TEST_F(Program, WithoutItsTextsItDoesNotStart) {
    std::filesystem::remove("Translations.ini");
    EXPECT_EQ(run("Launcher"), 1);
    EXPECT_EQ(m_log.errors(), Lines{"Unable to initialize editor interfaces."});
    EXPECT_EQ(m_guis, 0) << "no window";
    EXPECT_TRUE(m_process.requests.empty()) << "no hand-off";
}

TEST_F(Program, TheLauncherStartsAgainAtTheEnd) {
    EXPECT_EQ(run("TestMode  Launcher"), 0);
    ASSERT_EQ(m_process.requests.size(), 1U);
    EXPECT_EQ(std::filesystem::path(m_process.requests.front().program).filename(), "Menu.exe");
}

TEST_F(Program, WithoutComponentsNothingIsShownAndTheLauncherStartsAgain) {
    m_componentsFail = true;
    EXPECT_EQ(run("Launcher"), 1);
    EXPECT_EQ(m_log.errors(), Lines{"CoInitialize failed (8007000E)"});
    EXPECT_EQ(m_process.requests.size(), 1U);
}

TEST_F(Program, WithoutADisplayItFails) {
    m_hasDisplay = false;
    EXPECT_EQ(run(""), 1);
}

TEST_F(Program, WithoutALayoutItEndsNormally) {
    std::filesystem::remove("UI/OpenScene.xml");
    EXPECT_EQ(run(""), 0);
    EXPECT_EQ(m_log.errors(), Lines{"Unable to read layout UI/OpenScene.xml"});
}

} // namespace
