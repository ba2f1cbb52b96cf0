// The two lists of the open scene window: what they show, finding, and copies of scenes.
#include <atomic>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "core/EditorSettings.h"
#include "core/Services.h"
#include "core/Text.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "recovery/Places.h"
#include "recovery/RecentScenes.h"
#include "scene/SceneFolders.h"
#include "stills/StillService.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/gui/WindowDriver.h"
#include "tests/support/windows/EditorTest.h"
#include "toolkit/controls/CPictureUI.h"
#include "ui/OpenScene.h"

namespace {

using platform::Key;
using support::writeBytes;

const std::string kTwoBranches =
    "<Scene><Name>Fire</Name><FirstBranch>B</FirstBranch><Branch><ID>A</ID><Filename>a.ogv"
    "</Filename></Branch><Branch><ID>B</ID><Filename>clip.ogv</Filename></Branch></Scene>";

class SceneListsTest : public test::WindowTest<ui::OpenScene> {
protected:
    SceneListsTest() {
        m_services.stills = std::make_shared<stills::StillService>(
            m_gui.loop(), platform::nativeFileSystem(), std::string());
        // Whole, but it gets shorter while it is read.
        writeBytes("Scenes/Damaged/Scene.xml", "<Scene/>" + std::string(100, ' '));
        m_files.setRule(
            [](const support::Call& call) {
                return call.operation == "read" && call.path.find("Damaged") != std::string::npos
                           ? support::Fault::shorten
                           : support::Fault::none;
            },
            0);
        writeBytes("Scenes/Fire/Scene.xml", kTwoBranches);
        writeBytes("Scenes/Fire/clip.ogv", support::makeClip({}));
        writeBytes("Scenes/Über/Scene.xml", std::string("<Scene><Branch/></Scene>"));
    }
    toolkit::CListUI& list(std::u16string_view name) {
        return m_driver->get<toolkit::CListUI>(name);
    }
    [[nodiscard]] std::u16string inCard(int row, std::u16string_view name) {
        return test::inRow(*m_driver, u"ListScenes", row, name).GetText();
    }
    /// Names the copy of the chosen scene, by the menu.
    void duplicate(const std::u16string& name) {
        m_driver->click(u"ButtonMenu");
        m_driver->press(Key::down);
        m_driver->press(Key::enter);
        m_driver->type(name);
        m_driver->press(Key::enter);
    }
    [[nodiscard]] std::u16string chosen() {
        return test::inRow(*m_driver, u"SceneList", list(u"SceneList").GetCurSel(), u"ListItem")
            .GetText();
    }

    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_override{{&m_files, core::services().clock, core::services().process}};
};

TEST_F(SceneListsTest, TheSecondListShowsTheLastSceneFirstAndWhatTheFilesSay) {
    writeBytes(recovery::recentScenesPath(),
               "odd\n99 \n" + std::to_string(platform::nativeClock().now() + 1000) +
                   " Fire\n-5 Damaged\n99999999999999999999 Damaged\n");
    recovery::noteOpenedScene("a\nb");
    EXPECT_EQ(recovery::openedScenes().size(), 2U);
    show();
    ASSERT_TRUE(test::pumpUntil([&] {
        return inCard(0, u"Counts") == u"2 branches, 2 videos" &&
               test::inRow<toolkit::CPictureUI>(*m_driver, u"ListScenes", 0, u"Still")
                       .GetPicture() != nullptr;
    }));
    EXPECT_TRUE(test::pumpUntil([&] { return inCard(1, u"Counts") == u"Cannot be read"; }));
    EXPECT_TRUE(test::pumpUntil([&] { return inCard(2, u"Counts") == u"1 branch, 0 videos"; }));
    EXPECT_TRUE(test::pumpUntil([&] { return inCard(0, u"Findings") == u"4 findings"; }));
    EXPECT_TRUE(test::pumpUntil([&] { return inCard(2, u"Findings") == u"2 findings"; }));
    EXPECT_EQ(inCard(1, u"Findings"), u"");
    EXPECT_EQ(chosen(), u"Damaged") << "the first of the folder, as ever";
    EXPECT_EQ(list(u"ListScenes").GetCurSel(), 1);
    m_driver->click(*list(u"ListScenes").GetItemAt(0));
    EXPECT_EQ(chosen(), u"Fire");
    m_driver->press(Key::down);
    EXPECT_EQ(chosen(), u"Damaged");
    m_driver->click(*list(u"SceneList").GetItemAt(2));
    EXPECT_EQ(list(u"ListScenes").GetCurSel(), 2);
    m_driver->doubleClick(test::WindowDriver::middleOf(*list(u"ListScenes").GetItemAt(0)));
    EXPECT_EQ(scene().Name(), "Fire");
    EXPECT_TRUE(isClosed(*m_window));
}

TEST_F(SceneListsTest, FindingMovesTheChoiceAndHidesNothing) {
    writeBytes("Scenes/Fire 2/Scene.xml", kTwoBranches);
    show();
    m_driver->press(Key::f, {.control = true});
    EXPECT_EQ(m_driver->focusName(), u"EditFindScene");
    const std::pair<std::u16string, std::u16string> steps[] = {
        {u"re", u"Fire"}, {u" 2", u"Fire 2"}, {u"x", u"Fire 2"}};
    for (const auto& [typed, found] : steps) {
        m_driver->type(typed);
        EXPECT_EQ(chosen(), found);
    }
    EXPECT_EQ(m_driver->textOf(u"LabelHint"), u"No scene has this name.");
    EXPECT_EQ(list(u"SceneList").GetCount(), 4);
    m_driver->retype(u"EditFindScene", u"FI");
    m_driver->press(Key::up);
    EXPECT_EQ(chosen(), u"Fire");
    m_driver->press(Key::escape);
    EXPECT_EQ(m_driver->textOf(u"EditFindScene"), u"");
    EXPECT_EQ(m_driver->focusName(), u"SceneList");
    m_driver->retype(u"EditFindScene", u"üBER");
    EXPECT_EQ(chosen(), u"Über");
    m_driver->press(Key::enter);
    EXPECT_TRUE(isClosed(*m_window));
}

TEST_F(SceneListsTest, OpenFolderShowsTheFolderOfTheChosenScene) {
    show();
    m_driver->click(*list(u"ListScenes").GetItemAt(0));
    const std::string folder = scene::scenesFolderPath() + core::storedText(chosen());
    for (const bool opens : {true, false}) {
        m_gui.userDesktop.opens = opens;
        m_driver->click(u"ButtonMenu");
        m_driver->press(Key::down);
        m_driver->press(Key::down);
        m_driver->press(Key::enter);
        ASSERT_FALSE(m_gui.userDesktop.opened.empty());
        EXPECT_EQ(m_gui.userDesktop.opened.back(), folder);
        EXPECT_EQ(isVisible(u"LabelProblem"), !opens);
    }
    EXPECT_EQ(m_driver->textOf(u"LabelProblem"), u"The folder cannot be shown.");
}

TEST_F(SceneListsTest, ACopyIsTheWholeFolderUnderItsOwnName) {
    writeBytes("Scenes/Fire/clip-ZoneInfo.xml", std::string("zones"));
    show();
    m_driver->click(*list(u"SceneList").GetItemAt(1));
    for (const auto& [name, problem] :
         {std::pair(u"a/b", u"would not be in the list"), std::pair(u"a<b", u"will not load"),
          std::pair(u"a&lt;b", u"another name"), std::pair(u"   ", u"folder of that name"),
          std::pair(u"Fire.", u"folder of that name"), std::pair(u"a:b", u"folder of that name"),
          std::pair(u"nul.x", u"folder of that name"), std::pair(u"LPT1", u"folder of that name"),
          std::pair(u"Über", u"already")}) {
        duplicate(name);
        EXPECT_NE(m_driver->textOf(u"LabelProblem").find(problem), std::u16string::npos);
        m_driver->press(Key::escape);
        EXPECT_FALSE(isVisible(u"PanelDuplicate") || isVisible(u"LabelProblem"));
    }
    duplicate({});
    EXPECT_TRUE(test::pumpUntil([&] { return list(u"SceneList").GetCount() == 4; }));
    EXPECT_EQ(chosen(), u"Fire 2");
    EXPECT_EQ(support::filesBelow("Scenes/Fire 2"),
              (std::vector<std::string>{"Scene.xml", "clip-ZoneInfo.xml", "clip.ogv"}));
    EXPECT_EQ(support::readBytes("Scenes/Fire 2/clip.ogv"),
              support::readBytes("Scenes/Fire/clip.ogv"));
    std::string expected = kTwoBranches;
    expected.insert(expected.find("</Name>"), " 2");
    EXPECT_EQ(support::readBytes("Scenes/Fire 2/Scene.xml"), expected);

    m_driver->click(*list(u"SceneList").GetItemAt(0));
    duplicate(u"x");
    EXPECT_TRUE(isVisible(u"LabelProblem")) << "a damaged scene cannot be renamed";
    m_driver->press(Key::escape);
    std::error_code failed;
    std::filesystem::create_directory_symlink(m_folder.path() + "Scenes/Fire",
                                              m_folder.path() + "Scenes/Fire 2/link", failed);
    if (!failed) {
        m_driver->click(*list(u"SceneList").GetItemAt(2));
        duplicate(u"x");
        EXPECT_TRUE(test::pumpUntil([&] { return isVisible(u"LabelProblem"); }));
        EXPECT_FALSE(support::exists("Scenes/x"));
    }
}

TEST_F(SceneListsTest, AnotherLanguageWaitsForACopy) {
    std::atomic<bool> goesOn = false;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    m_files.setRule(
        [&](const support::Call& call) {
            while (call.operation == "write" && call.path.find("Fire 2") != std::string::npos &&
                   !goesOn && std::chrono::steady_clock::now() < end) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            return support::Fault::none;
        },
        0);
    m_services.editorSettings = std::make_shared<core::EditorSettings>("Editor.ini");
    show();
    m_driver->click(*list(u"SceneList").GetItemAt(1));
    duplicate({});
    m_driver->click(u"ButtonMenu");
    m_driver->press(Key::end);
    m_driver->press(Key::up);
    m_driver->press(Key::enter);
    test::pump();
    const test::WindowDriver settings(test::topWindow());
    settings.pick(u"ComboLanguage", 2);
    settings.press(Key::escape);
    test::pump();
    EXPECT_FALSE(isClosed(*m_window));
    goesOn = true;
    EXPECT_TRUE(test::pumpUntil([&] { return isClosed(*m_window); })) << "to be shown again";
    EXPECT_TRUE(support::exists("Scenes/Fire 2/Scene.xml"));
}

} // namespace
