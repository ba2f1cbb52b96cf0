#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "app/services/CommandLine.h"
#include "app/services/Startup.h"
#include "core/Texts.h"
#include "core/Translations.h"
#include "platform/FileSystem.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
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

TEST(CommandLine, TheTextOfAnOptionIsForLinesWithoutAKnownToken) {
    const std::string help = app::requestedText("--help");
    const std::string version = app::requestedText("x  --version y");
    EXPECT_TRUE(help.starts_with("Usage: quorvel "));
    EXPECT_TRUE(version.starts_with("quorvel ") && version.ends_with("\n"));
    const std::pair<const char*, std::string> cases[] = {
        {"--version --help", help}, {"TestMode --help", ""},
        {"--version Launcher", ""}, {"testmode --help", help},
        {"\"--help\"", ""},         {"--Version", ""},
        {"--help=x", ""},           {"", ""},
    };
    for (const auto& [line, text] : cases) {
        EXPECT_EQ(app::requestedText(line), text) << line;
    }
}

/// The working folder is product/editor below a temporary folder.
class StartupTest : public support::TempFolderTest {
protected:
    StartupTest() {
        support::makeFolder("product/editor");
        (void)platform::nativeFileSystem().setCurrentFolder("product/editor");
    }

    app_state::SharedServices m_services;
    app_state::ScreenState m_state;
};

TEST_F(StartupTest, TheServicesSpeakTheLanguageOfTheSettingsAndAreDroppedWhole) {
    support::writeBytes("Translations.ini",
                        "[Language:English]\nZone=Zone\n[Language:\xC4\x8C]\nZone=Z\xC3\xB3na\n");
    const std::pair<const char*, const char*> cases[] = {
        {nullptr, "Zone"}, // no settings at all
        {"language=\xC4\x8C\n", "Z\xC3\xB3na"},
        {"language=\xC4\x8C\nbroken\n", "Zone"},
    };
    for (const auto& [settings, text] : cases) {
        if (settings != nullptr) {
            support::writeBytes("../../Settings/Settings.ini", settings);
        }
        m_state.quit = m_state.newSceneRequest = m_state.sceneCreated = true;
        ASSERT_TRUE(app::createServices(m_services, m_state));
        EXPECT_EQ(m_services.translations->translate("zone"), text);
        EXPECT_EQ(m_services.sceneSession->branchCount(), 0);
        EXPECT_FALSE(m_state.quit || m_state.newSceneRequest);
        EXPECT_TRUE(m_state.sceneCreated);
        const std::weak_ptr<scene::SceneManager> scenes = m_services.sceneManager;
        app::dropServices(m_services);
        EXPECT_TRUE(scenes.expired());
        EXPECT_FALSE(m_services.sceneSession || m_services.translations);
    }
}

TEST_F(StartupTest, ALanguageChosenInTheEditorComesFirst) {
    support::writeBytes("Translations.ini", "[Language:A]\nZone=a\n[Language:B]\nZone=b\n");
    support::writeBytes("../../Settings/Settings.ini", "language=A\n");
    support::writeBytes("Editor.ini", "language = B\n");
    ASSERT_TRUE(app::createServices(m_services, m_state));
    EXPECT_EQ(core::tr("Zone"_tr), u"b");
    app::dropServices(m_services);
    EXPECT_EQ(core::tr("Zone"_tr), u"Zone");
}

TEST(ShippedTranslations, HoldTheConditionsInFiveLanguages) {
    const auto textOf = [](const std::string& language, const char* key) {
        return core::Translations::create(QUORVEL_SOURCE_FOLDER "/data/Translations.ini", language)
            ->translate(key);
    };
    for (const char* language : {"French", "German", "Spanish", "Dutch"}) {
        for (const char* key : {"Default", "Keypress", "Random"}) {
            EXPECT_EQ(textOf("English", key), key);
            EXPECT_NE(textOf(language, key), key) << language << " has no text of its own";
        }
    }
    EXPECT_EQ(textOf("Spanish", "Zone") + textOf("Dutch", "Zone"), "ZonaZone");
}

} // namespace
