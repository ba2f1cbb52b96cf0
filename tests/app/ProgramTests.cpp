// Start-up, exit codes and the hand-off around the screens.
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/Program.h"
#include "core/Services.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RecordingProcess.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/support/windows/EditorTest.h"
#include "tests/support/windows/ScriptedGui.h"
#include "toolkit/CComboUI.h"
#include "tools/tour/Script.h"

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
        writeBytes("Scenes/\xC3\x9C"
                   "bung/Scene.xml",
                   "<Scene><Name>\xC3\x9C"
                   "bung</Name><Branch><Action/></Branch></Scene>");
        m_script->on(u"OpenSceneWindow", [this] { m_script->click(u"ButtonExit"); });
    }
    /// From here on the script opens the scene.
    void openTheScene() {
        m_script = std::make_unique<tour::Script>("./");
        m_script->on(u"OpenSceneWindow", [this] { m_script->click(u"ButtonLoadScene"); });
    }
    int run(const std::string& commandLine) {
        m_script->play(test::gui());
        const int exitCode =
            app::runProgram(commandLine, [this]() -> std::unique_ptr<platform::Gui> {
                ++m_guis;
                if (!m_hasDisplay) {
                    return nullptr;
                }
                auto gui = std::make_unique<test::ScriptedGui>(test::gui());
                gui->library.fails = m_componentsFail;
                gui->ends = [this] { return m_sessionEnds || !m_script->problem().empty(); };
                return gui;
            });
        m_script->stop();
        return exitCode;
    }

    support::LogCapture m_log;
    support::RecordingProcess m_process;
    core::ServicesOverride m_override{
        {core::services().fileSystem, core::services().clock, &m_process}};
    std::unique_ptr<tour::Script> m_script = std::make_unique<tour::Script>("./");
    bool m_hasDisplay = true;
    bool m_componentsFail = false;
    bool m_sessionEnds = false;
    int m_guis = 0;
};

TEST_F(Program, ExitEndsItWithSuccess) {
    EXPECT_EQ(run(""), 0);
    EXPECT_TRUE(m_script->isFinished());
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

TEST_F(Program, WithoutComponentsNothingIsShownAndTheLauncherStartsAgain) {
    m_componentsFail = true;
    EXPECT_EQ(run("Launcher"), 1);
    EXPECT_EQ(m_log.errors(), Lines{"CoInitialize failed (8007000E)"});
    ASSERT_EQ(m_process.requests.size(), 1U);
    EXPECT_EQ(std::filesystem::path(m_process.requests.front().program).filename(), "Menu.exe");
}

TEST_F(Program, WithoutADisplayItFails) {
    m_hasDisplay = false;
    EXPECT_EQ(run(""), 1);
}

TEST_F(Program, AClosedBranchEditorIsShownAgainUnlessTheSessionEnds) {
    openTheScene();
    m_script->on(u"QuorvelWindow", [] { test::topWindow().Close(); });
    m_script->on(u"QuorvelWindow", [this] {
        m_sessionEnds = true;
        test::topWindow().Close();
    });
    EXPECT_EQ(run("Launcher"), 0);
    EXPECT_TRUE(m_script->isFinished()) << m_script->problem();
    EXPECT_EQ(m_process.requests.size(), 1U);
}

TEST_F(Program, TheConditionsFollowTheLanguageOfTheSettings) {
    using Texts = std::vector<std::u16string>;
    const std::pair<const char*, Texts> cases[] = {
        {"German", {u"Standard", u"Tastendruck", u"Zone", u"Zufall"}},
        {"French", {u"Par d\u00E9faut", u"Touche", u"Zone", u"Au hasard"}},
        {"Fran\xC3\xA7"
         "ais",
         {u"Default", u"Keypress", u"Zone", u"Random"}},
    };
    for (const auto& [language, texts] : cases) {
        writeBytes("../../Settings/Settings.ini", "language=" + std::string(language) + "\r\n");
        Texts shown;
        openTheScene();
        m_script->on(u"QuorvelWindow", [&] {
            test::WindowDriver branches(test::topWindow());
            shown = test::itemsOf(
                test::inRow<toolkit::CComboUI>(branches, u"BranchList", 0, u"ComboConditions"));
            m_script->click(u"ButtonExit");
        });
        m_script->on(u"ConfirmationWindow", [this] { m_script->click(u"ButtonYes"); });
        EXPECT_EQ(run(""), 0);
        EXPECT_EQ(m_script->problem(), "");
        EXPECT_EQ(shown, texts) << language;
    }
    EXPECT_EQ(m_log.errors(), Lines());
}

} // namespace
