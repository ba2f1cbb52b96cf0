// The Publish window: what it starts from, publishing, and what it says while it runs and after.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core/EditorSettings.h"
#include "core/Text.h"
#include "core/Translations.h"
#include "import/Converter.h"
#include "platform/FileSystem.h"
#include "platform/Geometry.h"
#include "publish/PublishFolder.h"
#include "scene/SceneFolders.h"
#include "scene/SceneSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/importing/SceneImports.h"
#include "ui/publishing/PublishPlace.h"

namespace {

using platform::Key;
using support::exists;
using support::readBytes;
using test::isChecked;
using test::pumpUntil;
using test::WindowDriver;

std::string withSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

constexpr const char* kPage = "Published/Fire/index.html";

class Publishing : public test::BranchEditorTest {
protected:
    Publishing() {
        const support::Bytes clip = support::makeClip({.frames = 10});
        makeScene({"Alarm", "Lift"}, {"good.ogv", "good.ogv"});
        addAction(0, {}, "Lift");
        for (const char* name : {"good.ogv", "dies.ogv"}) {
            support::writeBytes(std::string("Scenes/Fire/") + name, clip);
        }
        m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
        m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
        m_services.sceneImports = std::make_shared<ui::SceneImports>(
            m_gui.loop(), platform::nativeFileSystem(), m_services.sceneSession,
            m_services.editorSettings, scene::sceneFolderPath("Fire"), [](const std::string&) {
                return imports::Converter{FAKE_CONVERTER, FAKE_CONVERTER};
            });
        EXPECT_TRUE(pumpUntil([this] { return m_services.sceneImports->converter().isFound(); }));
        EXPECT_TRUE(session().save(sceneFolder("Fire")));
    }
    ~Publishing() override { m_services.sceneImports.reset(); }
    /// Opens the window from the branch editor's menu; `act` closes it in the end.
    void publish(const std::function<void(const WindowDriver&)>& act) {
        if (!m_driver) {
            show();
        }
        m_driver->click(u"ButtonMenu");
        m_driver->type(u"p");
        inWindow("Publish.xml", act);
        m_driver->press(Key::enter);
    }
    static bool isDone(const WindowDriver& window) {
        return pumpUntil([&] { return window.get(u"ButtonPublishOpen").IsVisible(); });
    }
    static bool isAskingAgain(const WindowDriver& window) {
        return pumpUntil([&] { return window.get(u"ButtonPublish").IsVisible(); });
    }
};

TEST_F(Publishing, SavesAndPublishesAndRemembersWhatWasChosen) {
    session().setImmediate(0, 0, true);
    publish([](const WindowDriver& window) {
        EXPECT_EQ(window.textOf(u"EditPublishFolder"), u"Published/Fire");
        EXPECT_EQ(window.textOf(u"EditPublishTitle"), u"Fire");
        EXPECT_EQ(window.textOf(u"ButtonPublish"), u"Save and Publish");
        EXPECT_EQ(window.get(u"ButtonPublish").GetPos(), platform::Rect::at(332, 365, 160, 25));
        EXPECT_EQ(window.textOf(u"LabelPublishState"),
                  u"The scene is modified: publishing saves it first.");
        EXPECT_FALSE(window.get(u"PanelPublishCheck").IsVisible());
        window.retype(u"EditPublishTitle", u"Drill <1>");
        window.pick(u"ComboPublishLanguage", 2);
        window.click(u"CheckPublishReport");
        window.click(u"ButtonPublish");
        ASSERT_TRUE(isDone(window));
        EXPECT_TRUE(window.textOf(u"LabelPublished").ends_with(u"KB, in Published/Fire"));
        EXPECT_EQ(window.textOf(u"LabelPublishedVideos"), u"1 video");
        window.click(u"ButtonPublishOpen");
        window.click(u"ButtonPublishReveal");
        window.click(u"ButtonPublishAgain");
        EXPECT_EQ(window.textOf(u"ButtonPublish"), u"Publish");
        const toolkit::CControlUI& bar = window.get(u"ProgressPublish");
        EXPECT_NE(bar.accessibleValue(), u"0 %");
        window.click(u"ButtonPublish");
        ASSERT_TRUE(isDone(window));
        EXPECT_EQ(bar.accessibleValue(), u"0 %") << "no video had to be converted";
        window.press(Key::escape);
    });
    EXPECT_FALSE(session().isModified());
    EXPECT_NE(readBytes(kPage).find("<title>Drill &#60;1&#62;</title>"), std::string::npos);
    const std::string scene = readBytes("Published/Fire/scene.js");
    EXPECT_NE(scene.find("\"language\":\"de\",\"outlines\":true,\"keys\":true,\"report\":true"),
              std::string::npos);
    const std::string folder = withSlashes(m_folder.path()) + "Published/Fire";
    std::vector<std::string> opened = m_gui.userDesktop.opened;
    for (std::string& path : opened) {
        path = withSlashes(path);
    }
    EXPECT_EQ(opened, (std::vector{folder + "/index.html", folder}));
    publish([](const WindowDriver& window) {
        EXPECT_EQ(window.textOf(u"ComboPublishLanguage"), u"Deutsch");
        EXPECT_TRUE(isChecked(window, u"CheckPublishReport"));
        window.click(u"ButtonPublishClose");
    });
    m_driver->click(u"ButtonAddBranch");
    EXPECT_TRUE(session().isModified()) << "the editor works again";
}

TEST_F(Publishing, GoesToAFolderOfTheScenesNameUnlessThatIsAnothers) {
    using support::makeFolder;
    const std::string page = std::string("/") + std::string(publish::kListName);
    support::writeBytes("in/+once" + page, std::string());   // of "Once", from the time before
    support::writeBytes("in/Plain" + page, std::string());   // its own
    support::writeBytes("in/Lift" + page, std::string());    // of "Lift", not of "lift" or "LIFT"
    support::writeBytes("in/Mine/notes.txt", std::string()); // nobody's page
    makeFolder("in/Empty");
    const std::pair<std::string, std::string> folders[] = {
        {"Fire Drill Level 1", "Fire Drill Level 1"},
        {"\xC3\x89tage", "\xC3\x89tage"},
        {"v1.2", "v1.2"},
        {"fire", "fire"},
        {"Plain", "Plain"},
        {"Empty", "Empty"},
        {"Once", "+once"},
        {"LIFT", "+l+i+f+t"},
        {"lift", "lift%"},
        {"Mine", "+mine"},
        {"a_b", "a%5fb"}, // "a_b" was "a b"
        {"NUL .txt", "+n+u+l_%2etxt"},
        {"COM\xC2\xB9", "+c+o+m%c2%b9"},
        {"Up.", "+up%2e"},
        {".Up", "%2e+up"},
        {"Up ", "+up_"},
        {"A/B", "+a%2f+b"},
        {"Why?", "+why%3f"},
        {"FIRED~1", "+f+i+r+e+d%7e1"},
        {"\xFF", "%ff"},
        {"A\n", "+a%0a"},
        {"Plain.quorvel-old", "+plain%2equorvel-old"},
        {"", "%"},
    };
    for (const auto& [scene, folder] : folders) {
        EXPECT_EQ(ui::publishFolderName(platform::nativeFileSystem(), "in", scene), folder)
            << scene;
    }
}

TEST_F(Publishing, StartsFromTheLanguageOfTheEditorWhereThePageHasIt) {
    const std::pair<const char*, const char16_t*> languages[] = {
        {"german", u"Deutsch"}, {"Klingon", u"English"}, {"Dutch", u"Nederlands"}};
    for (const auto& [spoken, shown] : languages) {
        m_services.translations = m_services.translations->in(spoken);
        publish([shown = shown](const WindowDriver& window) {
            EXPECT_EQ(window.textOf(u"ComboPublishLanguage"), shown);
            window.click(u"ButtonPublishClose");
        });
    }
    m_services.editorSettings->set("publishLanguage", "fr");
    publish([](const WindowDriver& window) {
        EXPECT_EQ(window.textOf(u"ComboPublishLanguage"), u"Français") << "chosen before";
        window.click(u"ButtonPublishClose");
    });
}

TEST_F(Publishing, SaysWhyNothingWasPublished) {
    support::writeBytes("mine/a.txt", std::string("mine"));
    publish([this](const WindowDriver& window) {
        window.retype(u"EditPublishFolder", u"mine");
        window.click(u"ButtonPublish");
        ASSERT_TRUE(isAskingAgain(window));
        EXPECT_EQ(window.textOf(u"LabelProblem"), u"Not published: the folder is not empty.");
        // The dialog's answer: a folder in use gets a new one inside.
        m_gui.dialog.folder = m_folder.path() + "mine";
        window.click(u"ButtonPublishFolder");
        EXPECT_EQ(withSlashes(core::storedText(window.textOf(u"EditPublishFolder"))),
                  withSlashes(m_folder.path()) + "mine/Fire");
        EXPECT_FALSE(window.get(u"LabelProblem").IsVisible());
        session().setVideo(0, "dies.ogv");
        std::error_code ignored;
        std::filesystem::remove("Scenes/Fire/Scene.xml", ignored);
        support::makeFolder("Scenes/Fire/Scene.xml");
        window.click(u"ButtonPublish");
        ASSERT_TRUE(isAskingAgain(window));
        EXPECT_EQ(window.textOf(u"LabelProblem"), u"Not published: the scene could not be saved.");
        std::filesystem::remove("Scenes/Fire/Scene.xml", ignored);
        window.click(u"ButtonPublish");
        ASSERT_TRUE(isAskingAgain(window));
        EXPECT_EQ(window.textOf(u"LabelProblem"),
                  u"Not published: dies.ogv: the converter stopped (9).");
        window.press(Key::escape);
    });
    EXPECT_EQ(support::filesBelow("mine"), std::vector<std::string>{"a.txt"});
}

TEST_F(Publishing, EscCancelsItAndThenClosesTheWindow) {
    std::filesystem::copy_file("Scenes/Fire/good.ogv", "Scenes/Fire/hangs.ogv");
    session().setVideo(0, "hangs.ogv");
    publish([](const WindowDriver& window) {
        window.click(u"ButtonPublish");
        EXPECT_TRUE(pumpUntil(
            [&] { return window.textOf(u"LabelPublish") == u"Converting hangs.ogv, 1 of 2"; }));
        EXPECT_FALSE(window.get(u"EditPublishFolder").IsEnabled());
        EXPECT_FALSE(window.get(u"ButtonPublishClose").IsVisible());
        window.press(Key::escape);
        EXPECT_TRUE(isAskingAgain(window));
        EXPECT_FALSE(window.get(u"LabelProblem").IsVisible());
        window.press(Key::escape);
    });
    EXPECT_FALSE(exists(kPage));
}

TEST_F(Publishing, LeadsToWhatWouldStopALearnerAndPublishesAllTheSame) {
    session().setTarget(0, 0, "Roof");
    show();
    EXPECT_TRUE(pumpUntil([this] { return m_driver->textOf(u"CheckErrors") == u"1"; }));
    publish([](const WindowDriver& window) {
        EXPECT_EQ(window.textOf(u"LabelPublishFindings"), u"1 finding would stop a learner:");
        EXPECT_EQ(window.textOf(u"LabelPublishCheck"),
                  u"Alarm, action 1: \"Roof\" is not in the scene.");
        window.click(u"ButtonPublish");
        EXPECT_TRUE(isDone(window));
        window.click(u"ButtonPublishAgain");
        window.click(u"ButtonPublishShow");
    });
    EXPECT_TRUE(exists(kPage));
    EXPECT_TRUE(m_driver->get(u"ButtonFix").IsVisible()) << "the strip offers a remedy";
}

TEST_F(Publishing, WaitsForAnImport) {
    support::writeBytes("from/hangs.mov", std::string("a film"));
    m_services.sceneImports->add({m_folder.path() + "from/hangs.mov"});
    publish([this](const WindowDriver& window) {
        EXPECT_FALSE(window.get(u"ButtonPublish").IsEnabled());
        EXPECT_EQ(window.textOf(u"LabelPublishState"),
                  u"Videos are being imported: publishing waits for that.");
        m_services.sceneImports->queue().cancelAll();
        EXPECT_TRUE(pumpUntil([&] { return window.get(u"ButtonPublish").IsEnabled(); }));
        window.click(u"ButtonPublishClose");
    });
}

} // namespace
