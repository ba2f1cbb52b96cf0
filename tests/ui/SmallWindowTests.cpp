// The open scene and new scene windows.
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "core/Services.h"
#include "recovery/Drafts.h"
#include "recovery/KeptDrafts.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/FixedClock.h"
#include "tests/support/windows/EditorTest.h"
#include "ui/BranchList.h"
#include "ui/NewScene.h"
#include "ui/OpenScene.h"

namespace {

using support::writeBytes;
using test::WindowDriver;
using Texts = std::vector<std::u16string>;
using Lines = std::vector<std::string>;

class OpenSceneWindow : public test::WindowTest<ui::OpenScene> {
protected:
    toolkit::CListUI& list() { return m_driver->get<toolkit::CListUI>(u"SceneList"); }
    /// Not every system's disk holds a name that is no text.
    void makeSceneThatIsNoText() {
        m_files.showAs(kNoText, "b-d");
        writeBytes("Scenes/b-d/Scene.xml", "");
    }

    static constexpr const char* kNoText = "b\xFF"
                                           "d";
    support::FaultyFileSystem m_files{platform::nativeFileSystem()};
    core::ServicesOverride m_override{{&m_files, core::services().clock, core::services().process}};
};

TEST_F(OpenSceneWindow, ListsFoldersWithASceneFileThatNothingReplaces) {
    makeSceneThatIsNoText();
    writeBytes("Scenes/Fire %s/Scene.xml", "");
    writeBytes("Scenes/Empty/clip.ogv", "");
    writeBytes("Scenes/Old/Scene.xml", "");
    writeBytes("Scenes/Old/Replaced", "");
    writeBytes("Scenes/Kept/Scene.xml", "");
    support::makeFolder("Scenes/Kept/Replaced");
    support::makeFolder("Scenes/Odd/Scene.xml");
    writeBytes("Scenes/Scene.xml", "");
    WindowDriver& driver = show();
    Texts names;
    for (int row = 0; row < list().GetCount(); ++row) {
        const auto& item = test::inRow(driver, u"SceneList", row, u"ListItem");
        names.push_back(item.GetText());
        EXPECT_EQ(item.GetToolTip(), u"Open " + names.back() + u" scenario");
    }
    EXPECT_EQ(names, (Texts{u"b\uFFFDd", u"Fire %s", u"Kept"}));
    EXPECT_EQ(list().GetCurSel(), 0);
    EXPECT_FALSE(isVisible(u"EmptyHeading"));
    EXPECT_EQ(list().GetItemAt(1)->GetName(), u"Row");
    EXPECT_EQ(test::inRow(driver, u"SceneList", 1, u"ListItem").GetPos(),
              platform::Rect::at(25, 122, 254, 16))
        << "set in from the list's edge";
}

TEST_F(OpenSceneWindow, OpensTheChosenSceneUnderItsStoredName) {
    makeSceneThatIsNoText();
    writeBytes("Scenes/Fire/Scene.xml", "");
    show().click(u"ButtonLoadScene");
    EXPECT_EQ(scene().Name(), kNoText);
    EXPECT_TRUE(isClosed(*m_window));
    EXPECT_FALSE(m_state.quit || m_state.newSceneRequest);

    show().click(test::inRow(*m_driver, u"SceneList", 1, u"ListItem"));
    m_driver->click(u"ButtonLoadScene");
    EXPECT_EQ(scene().Name(), "Fire");

    // The keyboard stands in the list.
    scene().SetName("");
    show().press(platform::Key::down);
    m_driver->press(platform::Key::enter);
    EXPECT_EQ(scene().Name(), "Fire");
    EXPECT_TRUE(isClosed(*m_window));

    scene().SetName("");
    const platform::Point row =
        WindowDriver::middleOf(test::inRow(show(), u"SceneList", 1, u"ListItem"));
    m_driver->click(row);
    EXPECT_FALSE(isClosed(*m_window));
    m_driver->doubleClick(row);
    EXPECT_EQ(scene().Name(), "Fire");
    EXPECT_TRUE(isClosed(*m_window));
}

TEST_F(OpenSceneWindow, OffersTheUnsavedWorkOfTheChosenSceneOrElseTheNewest) {
    support::FixedClock clock;
    const core::ServicesOverride fixed({&m_files, &clock, core::services().process});
    const auto keep = [](const std::string& scene, const std::string& base) {
        recovery::Drafts drafts(test::gui().loop(), [] { return true; });
        const auto draft = drafts.open({scene, scene, {}, base}, [] {
            return recovery::DraftContent{
                {recovery::kDraftScene, [](core::File& file) { return file.writeString("x"); }}};
        });
        draft->changed();
    };
    writeBytes("Scenes/A/Scene.xml", "");
    writeBytes("Scenes/Fire/Scene.xml", "");
    show();
    EXPECT_FALSE(isVisible(u"PanelDraft"));
    EXPECT_FALSE(m_driver->get(u"ButtonRestoreDraft").IsVisible());

    keep("Fire", "another state");
    clock.time += 60;
    keep("New", "none");
    const auto offered = [this] { return m_driver->textOf(u"LabelDraft"); };
    show();
    EXPECT_TRUE(isVisible(u"PanelDraft"));
    EXPECT_EQ(offered(), u"Unsaved work of \"New\" from today, 22:14, was kept.");
    m_driver->click(test::inRow(*m_driver, u"SceneList", 1, u"ListItem"));
    EXPECT_EQ(offered(), u"Unsaved work of \"Fire\" from today, 22:13, was kept; the scene was "
                         u"saved after it.");
    m_driver->click(u"ButtonRestoreDraft");
    EXPECT_TRUE(isClosed(*m_window));
    EXPECT_EQ(scene().Name(), "Fire");
    EXPECT_EQ(m_state.draftToRestore, recovery::keptSceneDrafts().at(1).folder);

    m_state.unreadableDraft = recovery::keptSceneDrafts().at(1).folder;
    show().click(test::inRow(*m_driver, u"SceneList", 1, u"ListItem"));
    EXPECT_EQ(m_driver->textOf(u"LabelProblem"), u"The unsaved work cannot be read.");
    EXPECT_EQ(offered(), u"Unsaved work of \"New\" from today, 22:14, was kept.");

    clock.time += 86400;
    show();
    EXPECT_EQ(offered(), u"Unsaved work of \"New\" from 14 Nov, 22:14, was kept.");
    m_driver->click(u"ButtonDropDraft");
    EXPECT_FALSE(isVisible(u"PanelDraft"));
    show().click(test::inRow(*m_driver, u"SceneList", 1, u"ListItem"));
    EXPECT_FALSE(isVisible(u"PanelDraft")) << "for the rest of the run";
    EXPECT_EQ(recovery::keptSceneDrafts().size(), 2U);
}

TEST_F(OpenSceneWindow, WithoutScenesItSaysWhatToDo) {
    scene().SetName("kept");
    WindowDriver& driver = show();
    for (const auto* name : {u"EmptyIcon", u"EmptyHeading", u"EmptyLine"}) {
        EXPECT_TRUE(isVisible(name));
    }
    EXPECT_EQ(driver.textOf(u"EmptyHeading"), u"No scenes yet");
    driver.click(u"ButtonLoadScene");
    EXPECT_FALSE(isClosed(*m_window));
    EXPECT_EQ(scene().Name(), "kept");
}

TEST_F(OpenSceneWindow, TellsWhyItIsBackAfterASceneThatDoesNotLoad) {
    writeBytes("Scenes/A %s/Scene.xml", "no scene");
    show();
    EXPECT_FALSE(isVisible(u"LabelProblem"));
    EXPECT_FALSE(scene().Load("A %s"));
    show();
    EXPECT_EQ(m_driver->textOf(u"LabelProblem"),
              u"\"A %s\" cannot be opened: its Scene.xml is not readable.");
    EXPECT_TRUE(isVisible(u"LabelProblem"));
    EXPECT_FALSE(isVisible(u"LabelHint"));
    scene().SetName("");
    EXPECT_FALSE(scene().Load("")); // as after the close box
    show();
    EXPECT_FALSE(isVisible(u"LabelProblem"));
    EXPECT_EQ(m_driver->textOf(u"LabelHint"),
              u"Open a scene, start a new one, or press Exit to leave.");
    writeBytes("Scenes/A %s/Scene.xml", "<Scene><Name>A</Name></Scene>");
    EXPECT_TRUE(scene().Load("A %s"));
    show();
    EXPECT_TRUE(isVisible(u"LabelHint"));
}

TEST_F(OpenSceneWindow, OnlyTheButtonsSetAFlag) {
    for (const std::u16string_view way : {u"ButtonNewScene", u"ButtonExit", u"closebox"}) {
        m_state = {};
        show();
        if (way == u"closebox") {
            test::input().requestClose(m_driver->native());
            test::pump();
        } else {
            m_driver->click(way);
        }
        EXPECT_EQ(m_state.newSceneRequest, way == u"ButtonNewScene");
        EXPECT_EQ(m_state.quit, way == u"ButtonExit");
        EXPECT_TRUE(isClosed(*m_window));
    }
}

class NewSceneWindow : public test::WindowTest<ui::NewScene> {
protected:
    NewSceneWindow() { scene().SetName("before"); }
};

TEST_F(NewSceneWindow, TakesAnyName) {
    const std::pair<std::u16string, std::string> names[] = {
        {u"", ""},
        {u"..", ".."},
        {u"a/b\\c", "a/b\\c"},
        {u"Übung \"%s\" & <x>", "\xC3\x9C"
                                "bung \"%s\" & <x>"},
    };
    for (const auto& [typed, stored] : names) {
        m_state = {};
        scene().AddBranch();
        WindowDriver& driver = show();
        // The keyboard stands in the edit from the start.
        driver.type(typed);
        if (typed.size() % 2 == 0) {
            driver.click(u"ButtonCreate");
        } else {
            driver.press(platform::Key::enter);
        }
        EXPECT_EQ(scene().Name(), stored);
        EXPECT_EQ(scene().branchCount(), 0) << "a new scene is empty";
        EXPECT_EQ(scene().FirstBranch(), "");
        EXPECT_TRUE(m_state.sceneCreated);
        EXPECT_TRUE(isClosed(*m_window));
    }
}

TEST_F(NewSceneWindow, BackChangesNothing) {
    scene().AddBranch();
    WindowDriver& driver = show();
    driver.type(u"Other");
    driver.click(u"ButtonBack");
    EXPECT_TRUE(isClosed(*m_window));
    EXPECT_EQ(scene().Name(), "before");
    EXPECT_EQ(scene().branchCount(), 1);
    EXPECT_FALSE(m_state.sceneCreated);
}

TEST_F(NewSceneWindow, ATemplateIsTheSceneThatAnAuthorWouldMakeByHand) {
    using scene::Action;
    const auto saved = [this] { return session().savedForm(); };
    const auto make = [this](std::u16string_view tile, const std::u16string& count) {
        show().type(u"S");
        m_driver->click(tile);
        m_driver->retype(u"EditTemplateCount", count);
        m_driver->press(platform::Key::enter);
        EXPECT_TRUE(isClosed(*m_window) && session().isNew() && !session().undo());
        return session().savedForm();
    };
    const auto action = [this](int type, const char* parameter, const char* target) {
        const int number = session().actionCount(0);
        session().addAction(0);
        session().setType(0, number, type);
        session().setParameter(0, number, parameter);
        session().setTarget(0, number, target);
    };
    const auto begin = [this](const Lines& names) {
        session().newScene("S");
        for (const std::string& name : names) {
            session().addBranch();
            session().renameBranch(session().branchCount() - 1, name);
        }
    };
    const std::string steps = make(u"OptionTemplateLinear", u"1");
    begin({"Step 1", "Step 2"});
    action(Action::kDefaultAction, "", "Step 2");
    EXPECT_EQ(steps, saved());
    const std::string question = make(u"OptionTemplateQuiz", u"x"); // as it was
    begin({"Question", "Answer 1", "Answer 2", "Answer 3"});
    action(Action::kKeypressAction, "A", "Answer 1");
    action(Action::kKeypressAction, "B", "Answer 2");
    action(Action::kKeypressAction, "C", "Answer 3");
    action(Action::kDefaultAction, "", "Question");
    EXPECT_EQ(question, saved());
    make(u"OptionTemplateLinear", u"99999999999");
    EXPECT_EQ(session().branchCount(), 12);

    show();
    EXPECT_TRUE(test::isChecked(*m_driver, u"OptionTemplateEmpty"));
    EXPECT_FALSE(m_driver->get(u"EditTemplateCount").IsEnabled());
    m_driver->click(u"OptionTemplateQuiz");
    EXPECT_EQ(m_driver->textOf(u"LabelTemplateCount"), u"Answers");
    m_driver->click(u"OptionTemplateEmpty");
    m_driver->click(u"ButtonCreate");
    EXPECT_EQ(session().branchCount(), 0);
}

TEST_F(NewSceneWindow, SaysWhatTheNameWillDo) {
    const std::u16string usual = u"A scene that already has this name is replaced when you save.";
    const std::u16string folders =
        u"/ and \\ make folders inside folders; the scene will not be in the list.";
    const std::pair<std::u16string, std::u16string> names[] = {
        {u"", u"Without a name the scene will not be in the list."},
        {u"a&b", usual},
        {u"a&b<", u"A scene with \"<\" in its name will not load again."},
        {u"Slips/Trips", folders},
        {u"back\\slash", folders},
        {u"..", u".. leads out of the scenes folder; the scene will not be in the list."},
        {u".", u". is the scenes folder itself; the scene will not be in the list."},
        {u"...", usual},
    };
    for (const auto& [name, hint] : names) {
        WindowDriver& driver = show();
        driver.type(name);
        EXPECT_EQ(driver.textOf(u"LabelHint"), hint);
    }
    m_driver->press(platform::Key::backspace);
    EXPECT_NE(m_driver->textOf(u"LabelHint"), usual);
}

TEST_F(NewSceneWindow, EachWindowUsesTheSystemsComponentsOnce) {
    const auto windows = [this] {
        return std::tuple(ui::NewScene::create(context()), ui::OpenScene::create(context()),
                          ui::BranchList::create(context()));
    };
    {
        const auto made = windows();
        EXPECT_EQ(m_gui.library.uses, 3);
    }
    EXPECT_EQ(m_gui.library.uses, 0);
    m_gui.library.fails = true;
    EXPECT_EQ(windows(), decltype(windows())());
    EXPECT_EQ(m_gui.library.uses, 0);
}

} // namespace
