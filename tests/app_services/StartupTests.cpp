#include <gtest/gtest.h>

#include "app/services/CommandLine.h"
#include "app/services/Startup.h"
#include "core/Translations.h"
#include "platform/FileSystem.h"
#include "scene/SceneManager.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"

namespace {

TEST(CommandLine, KnownTokensSetTheirBits) {
    const std::pair<const char*, std::uint32_t> cases[] = {
        {"   ", 0},
        {"launcher LAUNCHER", 0},
        {"Launcher  TestMode", 0x3},
        {"  SecondaryMonitor ", 0x8},
        {"TestMode TestMode x SecondaryMonitor Launcher", 0xB},
        {"Launcher\tTestMode", 0},
        {"\"Launcher\" -TestMode Launcher2", 0},
    };
    for (const auto& [line, flags] : cases) {
        EXPECT_EQ(app::parseCommandLine(line), flags) << line;
    }
}

TEST(CommandLine, ArgumentsAreJoinedWithOneBlank) {
    const char* const arguments[] = {"/usr/bin/TestMode", "Launcher", "a b", "", "TestMode"};
    EXPECT_EQ(app::joinArguments(5, arguments), "Launcher a b  TestMode");
    EXPECT_EQ(app::joinArguments(0, nullptr), "");
}

/// The working folder is product/editor below a temporary folder.
class StartupTest : public support::TempFolderTest {
protected:
    StartupTest() {
        support::makeFolder("product/editor");
        (void)platform::nativeFileSystem().setCurrentFolder("product/editor");
    }

    support::LogCapture m_log;
    app_state::SharedServices m_services;
    app_state::ScreenState m_state;
};

TEST_F(StartupTest, TheLanguageIsEnglishUnlessTheSettingsSayAnother) {
    EXPECT_EQ(app::readLanguage(), "English");
    support::writeBytes("../../Settings/Settings.ini", "language=\xC4\x8C"
                                                       "esky\n");
    EXPECT_EQ(app::readLanguage(), "\xC4\x8C"
                                   "esky");
    support::writeBytes("../../Settings/Settings.ini", "language=French\nbroken\n");
    EXPECT_EQ(app::readLanguage(), "English");
}

TEST_F(StartupTest, TheServicesAreMadeAndDropped) {
    support::writeBytes("Translations.ini", "[Language:French]\nZone=La zone\n");
    support::writeBytes("../../Settings/Settings.ini", "language=French\n");
    m_state.quit = m_state.newSceneRequest = m_state.sceneCreated = true;
    ASSERT_TRUE(app::createServices(m_services, m_state));
    EXPECT_EQ(m_services.translations->translate("zone"), "La zone");
    EXPECT_EQ(m_services.sceneManager->branchCount(), 0);
    EXPECT_FALSE(m_state.quit || m_state.newSceneRequest);
    EXPECT_TRUE(m_state.sceneCreated);
    EXPECT_EQ(m_log.errors(), std::vector<std::string>{});

    const std::weak_ptr<scene::SceneManager> scenes = m_services.sceneManager;
    app::dropServices(m_services);
    EXPECT_TRUE(scenes.expired());
    EXPECT_FALSE(m_services.sceneManager || m_services.translations);
}

TEST_F(StartupTest, AMissingTranslationFileFailsTheStart) {
    m_state.quit = true;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(app::createServices(m_services, m_state));
    const std::string told = support::withSlashes(testing::internal::GetCapturedStderr());
    EXPECT_NE(told.find(support::withSlashes(m_folder.path()) + "product/editor/Translations.ini"),
              std::string::npos);
    EXPECT_EQ(m_log.errors(), std::vector<std::string>{"Unable to initialize editor interfaces."});
    EXPECT_TRUE(m_state.quit);
}

TEST(ShippedTranslations, HoldTheFourConditionsInFiveLanguages) {
    const std::pair<const char*, std::string> cases[] = {
        {"English", "Default,Keypress,Zone,Random"},
        {"French", "Par d\xC3\xA9"
                   "faut,Touche,Zone,Au hasard"},
        {"German", "Standard,Tastendruck,Zone,Zufall"},
        {"Spanish", "Por defecto,Tecla,Zona,Al azar"},
        {"Dutch", "Standaard,Toets,Zone,Willekeurig"},
    };
    for (const auto& [language, texts] : cases) {
        const auto shipped =
            core::Translations::create(QUORVEL_SOURCE_FOLDER "/data/Translations.ini", language);
        ASSERT_TRUE(shipped);
        EXPECT_EQ(shipped->translate("Default") + "," + shipped->translate("Keypress") + "," +
                      shipped->translate("Zone") + "," + shipped->translate("Random"),
                  texts);
        EXPECT_EQ(shipped->languages().count(language), 1U);
    }
}

} // namespace
