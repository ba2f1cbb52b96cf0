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
#include "tests/support/windows/EditorTest.h"
#include "toolkit/CComboUI.h"
#include "tools/tour/Script.h"

namespace {

using support::writeBytes;
using Lines = std::vector<std::string>;
using Texts = std::vector<std::u16string>;

/// The program's working directory is two folders deep, as in the product.
class Program : public support::TempFolderTest {
protected:
    Program() {
        writeBytes("Settings/Launcher.ini", "Menu.exe");
        support::makeFolder("Programs/Quorvel");
        std::filesystem::current_path("Programs/Quorvel");
        test::copySkin();
        writeBytes("Scenes/\xC3\x9C/Scene.xml",
                   "<Scene><Name>\xC3\x9C</Name><Branch><Action/></Branch></Scene>");
    }
    int run(const std::string& commandLine, tour::Script& script) {
        script.play(test::gui());
        const int exitCode = app::runProgram(commandLine, [&]() -> std::unique_ptr<platform::Gui> {
            ++m_guis;
            auto gui = std::make_unique<test::ScriptedGui>(test::gui());
            gui->library.fails = m_componentsFail;
            gui->ends = [&] { return m_sessionEnds || !script.problem().empty(); };
            return m_hasDisplay ? std::move(gui) : nullptr;
        });
        script.stop();
        EXPECT_EQ(script.problem(), "");
        EXPECT_TRUE(script.isFinished());
        return exitCode;
    }

    support::LogCapture m_log;
    support::RecordingProcess m_process;
    core::ServicesOverride m_override{
        {core::services().fileSystem, core::services().clock, &m_process}};
    bool m_hasDisplay = true;
    bool m_componentsFail = false;
    bool m_sessionEnds = false;
    int m_guis = 0;
};

TEST_F(Program, AStartThatFailsShowsNothing) {
    tour::Script nothing("./");
    m_componentsFail = true;
    EXPECT_EQ(run("Launcher", nothing), 1);
    ASSERT_EQ(m_process.requests.size(), 1U) << "the launcher starts again";
    EXPECT_EQ(std::filesystem::path(m_process.requests.front().program).filename(), "Menu.exe");
    m_componentsFail = m_hasDisplay = false;
    EXPECT_EQ(run("", nothing), 1);
    std::filesystem::remove("Translations.ini");
    EXPECT_EQ(run("Launcher", nothing), 1);
    EXPECT_EQ(m_guis, 2) << "without texts there is no window";
    EXPECT_EQ(m_process.requests.size(), 1U) << "and no hand-off";
    EXPECT_EQ(m_log.errors(),
              (Lines{"CoInitialize failed (8007000E)", "Unable to initialize editor interfaces."}));
}

TEST_F(Program, AClosedBranchEditorIsShownAgainUnlessTheSessionEnds) {
    tour::Script script("./");
    script.on(u"OpenSceneWindow", [&] { script.click(u"ButtonLoadScene"); });
    script.on(u"QuorvelWindow", [] { test::topWindow().Close(); });
    script.on(u"QuorvelWindow", [this] {
        m_sessionEnds = true;
        test::topWindow().Close();
    });
    EXPECT_EQ(run("Launcher", script), 0);
    EXPECT_EQ(m_process.requests.size(), 1U);
}

TEST_F(Program, TheConditionsFollowTheLanguageOfTheSettings) {
    const std::pair<std::string, Texts> cases[] = {
        {"German", {u"Standard", u"Tastendruck", u"Zone", u"Zufall"}},
        {"French", {u"Par d\u00E9faut", u"Touche", u"Zone", u"Au hasard"}},
        {"\xC3\x9Cnknown", {u"Default", u"Keypress", u"Zone", u"Random"}},
    };
    for (const auto& [language, texts] : cases) {
        writeBytes("../../Settings/Settings.ini", "language=" + language + "\r\n");
        Texts shown;
        tour::Script script("./");
        script.on(u"OpenSceneWindow", [&] { script.click(u"ButtonLoadScene"); });
        script.on(u"QuorvelWindow", [&] {
            shown = test::itemsOf(test::inRow<toolkit::CComboUI>(
                test::WindowDriver(test::topWindow()), u"BranchList", 0, u"ComboConditions"));
            script.click(u"ButtonExit");
        });
        script.on(u"ConfirmationWindow", [&] { script.click(u"ButtonYes"); });
        EXPECT_EQ(run("", script), 0);
        EXPECT_EQ(shown, texts) << language;
    }
    EXPECT_EQ(m_log.errors(), Lines());
    EXPECT_TRUE(m_process.requests.empty());
}

} // namespace
