// The branch editor: branches, their names, the first branch, and leaving it.
#include <filesystem>
#include <functional>
#include <string>

#include "core/Text.h"
#include "tests/support/windows/Answering.h"
#include "tests/ui/BranchListFixture.h"

namespace {

using platform::Key;
using support::readBytes;
using test::Answer;
using test::answering;
using test::isChecked;
using test::itemsOf;
using test::Texts;
using test::WindowDriver;

class BranchEditor : public test::BranchEditorTest {};

TEST_F(BranchEditor, ShowsTheChosenBranchAndWhetherItIsTheFirst) {
    makeScene({"Alarm", "Lift"});
    scene().SetFirstBranch("Lift");
    WindowDriver& driver = show();
    EXPECT_EQ(driver.textOf(u"LabelScene"), u"Fire");
    EXPECT_EQ(itemsOf(combo(u"ComboBranchName")), (Texts{u"Alarm", u"Lift"}));
    EXPECT_EQ(driver.textOf(u"EditBranchName"), u"Alarm");
    EXPECT_FALSE(isChecked(driver, u"CheckFirst"));
    driver.pick(u"ComboBranchName", 1);
    EXPECT_EQ(driver.textOf(u"EditBranchName"), u"Lift");
    EXPECT_TRUE(isChecked(driver, u"CheckFirst"));
    // Unchecking does nothing: another branch has to be checked.
    driver.click(u"CheckFirst");
    EXPECT_FALSE(isChecked(driver, u"CheckFirst"));
    EXPECT_EQ(scene().FirstBranch(), "Lift");
    driver.pick(u"ComboBranchName", 0);
    driver.click(u"CheckFirst");
    EXPECT_EQ(scene().FirstBranch(), "Alarm");
    scene().SetFirstBranch("alarm"); // another spelling
    driver.pick(u"ComboBranchName", 0);
    EXPECT_FALSE(isChecked(driver, u"CheckFirst"));
    scene().SetFirstBranch("");
    driver.click(u"ButtonSave"); // gives a scene without a first branch its first one
    EXPECT_TRUE(isChecked(driver, u"CheckFirst"));
}

TEST_F(BranchEditor, RenamesWhenTheEditIsLeft) {
    const struct {
        std::u16string typed;
        std::string id; ///< afterwards
    } cases[] = {
        {u"Smoke", "Smoke"},
        {u"Lift", "Lift"},
        {u"Alarm", "Lift"}, // another branch's
        {u"alarm", "alarm"},
        {u"", ""},
        {u"50 % \"off\" & %s ä", "50 % \"off\" & %s \xC3\xA4"},
        {u"\U0001F525", "\xF0\x9F\x94\xA5"},
    };
    const std::u16string refusal = u"Another branch is named \"Alarm\" already.";
    for (const auto& test : cases) {
        SCOPED_TRACE(core::storedText(test.typed));
        makeScene({"Alarm", "Lift"});
        WindowDriver& driver = show();
        driver.pick(u"ComboBranchName", 1);
        driver.retype(u"EditBranchName", test.typed);
        driver.click(u"ButtonAddAction"); // leaving it and acting in one press
        EXPECT_EQ(driver.textOf(u"LabelStatus") == refusal, test.typed == u"Alarm");
        driver.click(u"ButtonAddAction");
        EXPECT_NE(driver.textOf(u"LabelStatus"), refusal);
        EXPECT_EQ(scene().branchID(0), "Alarm");
        EXPECT_EQ(scene().branchID(1), test.id);
        EXPECT_EQ(core::storedText(driver.textOf(u"EditBranchName")), test.id);
        EXPECT_EQ(core::storedText(driver.textOf(u"ComboBranchName")), test.id);
        EXPECT_EQ(combo(u"ComboBranchName").GetCurSel(), 1);
    }
}

TEST_F(BranchEditor, TheFirstBranchFollowsARenameAndTargetsDoNot) {
    makeScene({"Alarm", "Lift"});
    const scene::Action& action = addAction(0, "", "Alarm");
    WindowDriver& driver = show();
    driver.enter(u"EditBranchName", u"Smoke");
    EXPECT_FALSE(support::exists("Scenes/Fire/Scene.xml")) << "Enter saves nothing";
    EXPECT_EQ(scene().FirstBranch(), "Smoke");
    EXPECT_EQ(action.BranchID(), "Alarm");
    EXPECT_EQ(combo(0, u"ComboBranches").GetText(), u"") << "the target's name is gone";
    EXPECT_EQ(itemsOf(combo(0, u"ComboBranches")), (Texts{u"Smoke", u"Lift"}));
    // A name is taken before the next control acts.
    driver.retype(u"EditBranchName", u"Fire");
    driver.click(u"ButtonSave");
    EXPECT_NE(readBytes("Scenes/Fire/Scene.xml").find("<ID>Fire</ID>"), std::string::npos);
    driver.retype(u"EditBranchName", u"Hall");
    driver.press(Key::escape);
    EXPECT_EQ(driver.textOf(u"EditBranchName"), u"Fire");
    EXPECT_EQ(driver.focusName(), u"EditBranchName");
    driver.retype(u"EditBranchName", u"Hall");
    driver.pick(u"ComboBranchName", 1);
    EXPECT_EQ(scene().branchID(0), "Hall");
    EXPECT_EQ(driver.textOf(u"EditBranchName"), u"Lift");
}

TEST_F(BranchEditor, AddsBranchesAndOffersOnlyWhatCanBeDone) {
    makeScene({});
    WindowDriver& driver = show();
    const auto expectEnabled = [this](const Texts& names, bool enabled) {
        for (const std::u16string& name : names) {
            EXPECT_EQ(isEnabled(name), enabled) << core::storedText(name);
        }
    };
    const Texts ofABranch{u"ComboBranchName", u"EditBranchName", u"CheckFirst", u"ComboVideoName",
                          u"ButtonAddAction"};
    expectEnabled(ofABranch, false);
    expectEnabled({u"ButtonEditZones", u"ButtonRemoveAction"}, false);
    expectEnabled({u"ButtonExit", u"ButtonAddBranch", u"ButtonAddVideo"}, true);
    EXPECT_EQ(driver.textOf(u"EmptyHeading"), u"No branches yet");
    EXPECT_EQ(driver.textOf(u"EmptyLine"), u"Press Add Branch to start the scene.");
    driver.click(u"ButtonSave");
    EXPECT_FALSE(support::exists("Scenes")) << "a scene without branches is not saved";

    driver.click(u"ButtonAddBranch");
    EXPECT_EQ(scene().FirstBranch(), "New Branch 2") << "the first branch of a scene starts it";
    EXPECT_TRUE(isChecked(driver, u"CheckFirst"));
    expectEnabled(ofABranch, true);
    expectEnabled({u"ButtonEditZones", u"ButtonRemoveAction"}, false);
    EXPECT_EQ(driver.textOf(u"EmptyHeading"), u"No actions yet");
    EXPECT_EQ(driver.textOf(u"EmptyLine"), u"Press Add Action to say which branch plays next.");

    driver.click(u"ButtonAddAction");
    EXPECT_FALSE(isVisible(u"EmptyHeading") || isVisible(u"EmptyLine"));
    EXPECT_TRUE(isEnabled(u"ButtonRemoveAction")) << "the new row is chosen";
    driver.press(platform::Key::z, {.control = true});
    EXPECT_FALSE(isEnabled(u"ButtonRemoveAction"));

    driver.click(u"ButtonAddBranch");
    EXPECT_EQ(itemsOf(combo(u"ComboBranchName")), (Texts{u"New Branch 2", u"New Branch 3"}));
    EXPECT_EQ(driver.textOf(u"EditBranchName"), u"New Branch 3");
    EXPECT_FALSE(isChecked(driver, u"CheckFirst"));
}

TEST_F(BranchEditor, AFailedSaveIsShownUntilTheNextGoodOne) {
    makeScene({"Alarm"});
    support::makeFolder("Scenes/Fire/Scene.xml");
    const std::u16string usual = show().textOf(u"LabelStatus");
    EXPECT_EQ(usual, u"Changes are kept in memory until you press Save.");
    m_driver->click(u"ButtonSave");
    const std::u16string shown = m_driver->textOf(u"LabelStatus");
    EXPECT_EQ(shown.substr(0, 22), u"Not saved: Scene.xml: ");
    // In a label of its own, which stands out.
    EXPECT_EQ(m_driver->textOf(u"LabelProblem"), shown);
    EXPECT_TRUE(isVisible(u"LabelProblem"));
    EXPECT_FALSE(isVisible(u"LabelStatus"));
    show();
    EXPECT_EQ(m_driver->textOf(u"LabelStatus"), shown) << "another window still tells";
    std::filesystem::remove("Scenes/Fire/Scene.xml");
    m_driver->retype(u"EditBranchName", u"Smoke");
    m_driver->press(Key::s, {.control = true}); // takes the name on its way
    EXPECT_EQ(m_driver->textOf(u"LabelStatus"), u"Saved at 03:07:41 PM. " + usual);
    EXPECT_NE(support::readBytes("Scenes/Fire/Scene.xml").find("Smoke"), std::string::npos);
    EXPECT_FALSE(isVisible(u"LabelProblem"));
    EXPECT_TRUE(isVisible(u"LabelStatus"));
    m_driver->enter(u"EditBranchName", u"Smoke"); // no change
    EXPECT_EQ(m_driver->textOf(u"LabelStatus"), u"Saved at 03:07:41 PM. " + usual);
    m_driver->enter(u"EditBranchName", u"a<b");
    EXPECT_EQ(m_driver->textOf(u"LabelStatus"),
              u"The name \"a<b\" holds a \"<\": the scene will not load again.");
}

TEST_F(BranchEditor, SavedIsShownUntilTheFirstChange) {
    makeScene({"Alarm", "Lift"}, {"a.ogv", "b.ogv"});
    addAction(1, "L", "Lift");
    addAction(1, "L", "Lift");
    show();
    const auto isSavedShown = [this] {
        return m_driver->textOf(u"LabelStatus").starts_with(u"Saved at ");
    };
    const std::function<void()> looks[] = {
        [&] { m_driver->pick(u"ComboBranchName", 0); },
        [&] { m_driver->pick(u"ComboVideoName", 0); },
        [&] { m_driver->pick(combo(0, u"ComboConditions"), 1); },
        [&] { m_driver->pick(combo(0, u"ComboParameter"), 11); },
        [&] { m_driver->pick(combo(0, u"ComboBranches"), 1); },
        [&] { m_driver->click(u"CheckFirst"); }, // unchecking changes nothing
    };
    const std::function<void()> changes[] = {
        [&] { m_driver->pick(combo(0, u"ComboParameter"), 0); },
        [&] { m_driver->pick(combo(0, u"ComboConditions"), 0); },
        [&] { m_driver->pick(combo(0, u"ComboBranches"), 0); },
        [&] { m_driver->click(immediate(0)); },
        [&] { m_driver->pick(u"ComboVideoName", 1); },
        [&] { m_driver->click(u"ButtonAddAction"); },
        [&] {
            m_driver->click(immediate(1));
            m_driver->click(u"ButtonSave");
            m_driver->clickThen(u"ButtonRemoveAction", answering(Answer::yes));
        },
        [&] { m_driver->enter(u"EditBranchName", u"Smoke"); },
        [&] {
            m_driver->pick(u"ComboBranchName", 1);
            m_driver->click(u"CheckFirst");
        },
        [&] { m_driver->click(u"ButtonAddBranch"); },
    };
    m_driver->click(u"ButtonSave");
    for (const auto& look : looks) {
        look();
        EXPECT_TRUE(isSavedShown());
    }
    int number = 0;
    for (const auto& change : changes) {
        SCOPED_TRACE(number++);
        m_driver->click(u"ButtonSave");
        EXPECT_TRUE(isSavedShown());
        change();
        EXPECT_FALSE(isSavedShown());
    }
}

TEST_F(BranchEditor, ASceneThatTheListWillNotShowSaysSo) {
    makeScene({"Alarm"});
    for (const auto* name : {"Slips/Trips", "back\\slash", "..", ""}) {
        scene().SetName(name);
        EXPECT_TRUE(show().textOf(u"LabelStatus").ends_with(u"will not be in the list.")) << name;
    }
}

TEST_F(BranchEditor, ExitAsksAndADismissalMeansYes) {
    for (const Answer answer : {Answer::no, Answer::escape, Answer::yes, Answer::close}) {
        const bool leaves = answer == Answer::yes || answer == Answer::close;
        makeScene({"Alarm"});
        m_state.quit = false;
        std::string asked;
        show().clickThen(u"ButtonExit", answering(answer, &asked));
        EXPECT_EQ(asked, "Exit?|Are you sure you want to exit?");
        EXPECT_EQ(m_state.quit, leaves);
        EXPECT_EQ(isClosed(*m_window), leaves);
    }
    m_state.quit = false;
    show();
    std::filesystem::remove("UI/Confirmation.xml");
    m_driver->click(u"ButtonExit");
    EXPECT_TRUE(m_state.quit) << "a question that cannot be asked means yes as well";
    EXPECT_EQ(m_log.errors().back(),
              "Unable to show the question \"Are you sure you want to exit?\"");
}

TEST_F(BranchEditor, TheQuestionStandsAloneAndStartsOnNo) {
    makeScene({"Alarm"});
    WindowDriver& driver = show();
    for (const Key key : {Key::enter, Key::space}) {
        test::gui().loop().post([&] {
            driver.clickThen(u"ButtonExit", [&] {
                test::click(driver.native(),
                            WindowDriver::middleOf(driver.get(u"ButtonAddBranch")));
                platform::Event close;
                close.kind = platform::EventKind::closeRequest;
                m_window->HandleMessage(close);
                EXPECT_EQ(scene().branchCount(), 1) << "the window takes no input meanwhile";
                WindowDriver question(test::topWindow());
                EXPECT_TRUE(question.manager().focusKeeper().showsRing());
                const bool isOnNo = question.focusName() == u"ButtonNo";
                EXPECT_TRUE(isOnNo);
                question.press(isOnNo ? key : Key::escape);
            });
            test::gui().loop().post([] { test::gui().loop().postQuit(3); });
        });
        EXPECT_EQ(test::gui().loop().run(), 3) << "only the question's own loop has ended";
        EXPECT_FALSE(isClosed(*m_window));
    }
    driver.click(u"ButtonAddBranch");
    EXPECT_EQ(scene().branchCount(), 2);
    test::input().requestClose(driver.native());
    test::pump();
    EXPECT_TRUE(isClosed(*m_window)) << "and the close box asks nothing and sets no flag";
    EXPECT_FALSE(m_state.quit || m_state.zoneEditRequest);
}

TEST_F(BranchEditor, LookingAtEverythingAndSavingGivesTheSameBytes) {
    // Names that no edit and no list can show as they are: bad UTF-8, TABs, equal and empty IDs;
    // targets, parameters and videos that are not on offer; parameters where none is needed.
    const std::string bad = "b\xFF\xC3";
    const std::string wide(300, 'w');
    makeScene({bad, "two\tlines", "same", "same", "", wide},
              {"v\xFE.ogv", "a.ogv", "v\xFD.ogv", "", "A.OGV", wide});
    writeZones("a", {"Door"});
    addAction(2, "z\xFD", bad);
    addAction(2, "Door", "");
    addAction(2, "", "same");
    addAction(1, "lower", "nowhere").SetImmediate(true);
    addAction(1, "", wide);
    addAction(0, "left over", "same", 1).SetImmediate(true);
    addAction(3, "A", "two\tlines", 1);
    addAction(3, "", "", 1);
    ASSERT_TRUE(scene().Save(sceneFolder("Fire")));
    const std::string bytes = readBytes("Scenes/Fire/Scene.xml");
    ASSERT_TRUE(scene().Load("Fire"));
    WindowDriver& driver = show();
    for (const int branch : {1, 2, 3, 4, 5, 0, 5, 4, 3, 2, 1, 0}) {
        driver.pick(u"ComboBranchName", branch);
        driver.click(u"EditBranchName");
        driver.click(u"ComboVideoName");
        driver.press(Key::escape);
        for (int row = 0; row < actions().GetCount(); ++row) {
            for (const auto* name : {u"ComboConditions", u"ComboParameter", u"ComboBranches"}) {
                driver.click(combo(row, name));
                driver.press(Key::escape);
                driver.wheel(WindowDriver::middleOf(combo(row, name)), -1);
            }
        }
        for (int stop = 0; stop < 40; ++stop) {
            driver.press(Key::tab);
        }
    }
    driver.click(u"ButtonSave");
    EXPECT_EQ(readBytes("Scenes/Fire/Scene.xml"), bytes);
}

} // namespace
