// The branch editor: branches, their names, the first branch, saving and leaving.
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/Services.h"
#include "core/Text.h"
#include "tests/support/FixedClock.h"
#include "tests/support/windows/Answering.h"
#include "tests/support/windows/EditorTest.h"
#include "ui/BranchList.h"

namespace {

using support::readBytes;
using test::Answer;
using test::answering;
using test::isChecked;
using test::itemsOf;
using test::typeInto;
using test::WindowDriver;
using Texts = std::vector<std::u16string>;

class BranchEditor : public test::EditorTest {
protected:
    void makeScene(const std::vector<std::string>& ids) {
        scene().newScene("Fire drill");
        for (std::size_t i = 0; i < ids.size(); ++i) {
            scene().AddBranch();
            scene().renameBranch(static_cast<int>(i), ids[i]);
        }
    }
    void addAction(int branch, int type, const std::string& parameter, const std::string& target) {
        const auto action = scene::Action::create();
        action->SetType(type);
        action->SetParameter(parameter);
        action->SetBranchID(target);
        scene().addAction(branch, action);
    }
    WindowDriver& show() {
        m_window = open<ui::BranchList>(u"Quorvel");
        m_driver = std::make_unique<WindowDriver>(*m_window);
        return *m_driver;
    }
    toolkit::CComboUI& branches() { return m_driver->get<toolkit::CComboUI>(u"ComboBranchName"); }

    support::FixedClock m_clock;
    core::ServicesOverride m_override{
        {core::services().fileSystem, &m_clock, core::services().process}};
    std::shared_ptr<ui::BranchList> m_window;
    std::unique_ptr<WindowDriver> m_driver;
};

TEST_F(BranchEditor, StartsOnTheFirstBranchOfTheList) {
    makeScene({"Alarm", "Lift", "Way out"});
    scene().SetFirstBranch("Lift");
    WindowDriver& driver = show();
    EXPECT_EQ(driver.get(u"LabelScene").GetText(), u"Fire drill");
    EXPECT_EQ(itemsOf(branches()), (Texts{u"Alarm", u"Lift", u"Way out"}));
    EXPECT_EQ(branches().GetCurSel(), 0);
    EXPECT_EQ(driver.get(u"EditBranchName").GetText(), u"Alarm");
    EXPECT_FALSE(isChecked(driver, u"CheckFirst"));
    driver.pick(u"ComboBranchName", 1);
    EXPECT_EQ(driver.get(u"EditBranchName").GetText(), u"Lift");
    EXPECT_TRUE(isChecked(driver, u"CheckFirst"));
    scene().SetFirstBranch("alarm"); // another spelling
    driver.pick(u"ComboBranchName", 0);
    EXPECT_FALSE(isChecked(driver, u"CheckFirst"));
}

struct Rename {
    const char* what;
    std::u16string typed;
    std::vector<std::string> ids;
    std::u16string shown;
};

TEST_F(BranchEditor, RenamesWhenTheEditIsLeft) {
    const Rename cases[] = {
        {"a new name", u"Smoke", {"Alarm", "Smoke"}, u"Smoke"},
        {"its own name", u"Lift", {"Alarm", "Lift"}, u"Lift"},
        {"another branch's name", u"Alarm", {"Alarm", "Lift"}, u"Lift"},
        {"another spelling of it", u"alarm", {"Alarm", "alarm"}, u"alarm"},
        {"no name at all", u"", {"Alarm", ""}, u""},
        {"an odd name",
         u"50 % \"off\" & %s ä",
         {"Alarm", "50 % \"off\" & %s \xC3\xA4"},
         u"50 % \"off\" & %s ä"},
        {"a name beyond the basic plane",
         u"\U0001F525",
         {"Alarm", "\xF0\x9F\x94\xA5"},
         u"\U0001F525"},
    };
    for (const Rename& test : cases) {
        makeScene({"Alarm", "Lift"});
        WindowDriver& driver = show();
        driver.pick(u"ComboBranchName", 1);
        typeInto(driver, u"EditBranchName", test.typed);
        driver.press(platform::Key::tab);
        std::vector<std::string> ids;
        scene().branchIDs(ids);
        EXPECT_EQ(ids, test.ids) << test.what;
        EXPECT_EQ(driver.get(u"EditBranchName").GetText(), test.shown) << test.what;
        EXPECT_EQ(branches().GetCurSel(), 1) << test.what;
        EXPECT_EQ(branches().GetText(), test.shown) << test.what;
    }
}

TEST_F(BranchEditor, ANameIsTakenBeforeTheNextControlActs) {
    makeScene({"Alarm", "Lift"});
    WindowDriver& driver = show();
    typeInto(driver, u"EditBranchName", u"Smoke");
    driver.click(u"ButtonSave");
    EXPECT_NE(readBytes("Scenes/Fire drill/Scene.xml").find("<ID>Smoke</ID>"), std::string::npos);
    typeInto(driver, u"EditBranchName", u"Fire");
    driver.pick(u"ComboBranchName", 1);
    EXPECT_EQ(scene().branchID(0), "Fire");
    EXPECT_EQ(driver.get(u"EditBranchName").GetText(), u"Lift");
}

TEST_F(BranchEditor, TheFirstBranchFollowsARenameAndTargetsDoNot) {
    makeScene({"Alarm", "Lift"});
    addAction(1, 0, "", "Alarm");
    addAction(0, 0, "", "Alarm");
    WindowDriver& driver = show();
    driver.enter(u"EditBranchName", u"Smoke");
    EXPECT_FALSE(support::exists("Scenes/Fire drill/Scene.xml")) << "Enter saves nothing";
    EXPECT_EQ(scene().FirstBranch(), "Smoke");
    EXPECT_EQ(scene().action(1, 0)->BranchID(), "Alarm");
    EXPECT_EQ(scene().action(0, 0)->BranchID(), "Alarm");
    const auto& target = test::inRow<toolkit::CComboUI>(driver, u"BranchList", 0, u"ComboBranches");
    EXPECT_EQ(target.GetText(), u"") << "the target's name is gone";
    EXPECT_EQ(itemsOf(target), (Texts{u"Smoke", u"Lift"}));
}

TEST_F(BranchEditor, CheckingMakesTheFirstBranchAndUncheckingDoesNothing) {
    makeScene({"Alarm", "Lift"});
    WindowDriver& driver = show();
    EXPECT_TRUE(isChecked(driver, u"CheckFirst"));
    driver.click(u"CheckFirst");
    EXPECT_FALSE(isChecked(driver, u"CheckFirst"));
    EXPECT_EQ(scene().FirstBranch(), "Alarm");
    driver.pick(u"ComboBranchName", 1);
    driver.click(u"CheckFirst");
    EXPECT_TRUE(isChecked(driver, u"CheckFirst"));
    EXPECT_EQ(scene().FirstBranch(), "Lift");
    driver.pick(u"ComboBranchName", 0);
    EXPECT_FALSE(isChecked(driver, u"CheckFirst"));
}

TEST_F(BranchEditor, AddsBranchesAndSelectsThem) {
    makeScene({});
    WindowDriver& driver = show();
    driver.click(u"ButtonAddBranch");
    EXPECT_EQ(scene().FirstBranch(), "New Branch 2") << "the first branch of a scene starts it";
    EXPECT_TRUE(isChecked(driver, u"CheckFirst"));
    driver.click(u"ButtonAddBranch");
    EXPECT_EQ(itemsOf(branches()), (Texts{u"New Branch 2", u"New Branch 3"}));
    EXPECT_EQ(branches().GetCurSel(), 1);
    EXPECT_EQ(driver.get(u"EditBranchName").GetText(), u"New Branch 3");
    EXPECT_FALSE(isChecked(driver, u"CheckFirst"));
}

TEST_F(BranchEditor, SavesTheSceneByteForByte) {
    makeScene({"Alarm & <co>", "Lift"});
    scene().setBranchFilename(0, "a.ogv");
    addAction(0, 2, "Door", "Lift");
    addAction(0, 1, "L", "Alarm & <co>");
    scene().action(0, 1)->SetImmediate(true);
    WindowDriver& driver = show();
    driver.click(u"ButtonSave");
    EXPECT_EQ(readBytes("Scenes/Fire drill/Scene.xml"),
              "<Scene>\r\n"
              "\t<Name>Fire drill</Name>\r\n"
              "\t<FirstBranch>Alarm & <co></FirstBranch>\r\n"
              "\t<Branch>\r\n"
              "\t\t<ID>Alarm & <co></ID>\r\n"
              "\t\t<Filename>a.ogv</Filename>\r\n"
              "\t\t<Action>\r\n"
              "\t\t\t<Type>ZoneAction</Type>\r\n"
              "\t\t\t<Parameter>Door</Parameter>\r\n"
              "\t\t\t<BranchID>Lift</BranchID>\r\n"
              "\t\t</Action>\r\n"
              "\t\t<Action>\r\n"
              "\t\t\t<Type>KeypressAction</Type>\r\n"
              "\t\t\t<Parameter>L</Parameter>\r\n"
              "\t\t\t<Immediate>true</Immediate>\r\n"
              "\t\t\t<BranchID>Alarm & <co></BranchID>\r\n"
              "\t\t</Action>\r\n"
              "\t</Branch>\r\n"
              "\t<Branch>\r\n"
              "\t\t<ID>Lift</ID>\r\n"
              "\t\t<Filename></Filename>\r\n"
              "\t</Branch>\r\n"
              "</Scene>\r\n");
    EXPECT_EQ(driver.get(u"LabelStatus").GetText(),
              u"Saved at 03:07:41 PM. The name \"Alarm & <co>\" holds a \"<\": a scene saved with "
              u"it will not load again.");
}

TEST_F(BranchEditor, ASceneWithoutBranchesIsNotSaved) {
    makeScene({});
    show().click(u"ButtonSave");
    EXPECT_FALSE(support::exists("Scenes"));
    EXPECT_TRUE(m_log.errors().empty());
}

/// An action's element in the file; empty texts as the file leaves them out.
std::string actionText(const char* type, const std::string& parameter, const std::string& target,
                       bool immediate = false) {
    return std::string("\t\t<Action>\r\n\t\t\t<Type>") + type + "</Type>\r\n" +
           (parameter.empty() ? "" : "\t\t\t<Parameter>" + parameter + "</Parameter>\r\n") +
           (immediate ? "\t\t\t<Immediate>true</Immediate>\r\n" : "") + "\t\t\t<BranchID>" +
           target + "</BranchID>\r\n\t\t</Action>\r\n";
}

std::string branchText(const std::string& id, const std::string& video,
                       const std::string& actions = {}) {
    return "\t<Branch>\r\n\t\t<ID>" + id + "</ID>\r\n\t\t<Filename>" + video + "</Filename>\r\n" +
           actions + "\t</Branch>\r\n";
}

TEST_F(BranchEditor, LookingAtEverythingAndSavingGivesTheSameBytes) {
    // Names that no edit and no list can show as they are: bad UTF-8, TABs, equal and empty IDs;
    // targets, parameters and videos that are not on offer; parameters where none is needed.
    const std::string bad = "b\xFF\xC3";
    const std::string wide(300, 'w');
    const std::string bytes =
        "<Scene>\r\n\t<Name>Odd</Name>\r\n\t<FirstBranch>" + bad + "</FirstBranch>\r\n" +
        branchText(bad, "v\xFE.ogv",
                   actionText("ZoneAction", "z\xFD", bad) + actionText("ZoneAction", "Door", "") +
                       actionText("ZoneAction", "", "same") +
                       actionText("KeypressAction", "lower", "nowhere", true) +
                       actionText("KeypressAction", "Q", "", true) +
                       actionText("KeypressAction", "", wide)) +
        branchText("two\tlines", "a.ogv",
                   actionText("DefaultAction", "left over", "same", true) +
                       actionText("RandomAction", "A", "two\tlines") +
                       actionText("RandomAction", "", "")) +
        branchText("same", "v\xFD.ogv") + branchText("same", "") + branchText("", "A.OGV") +
        branchText(wide, wide) + "</Scene>\r\n";
    support::writeBytes("Scenes/Odd/Scene.xml", bytes);
    support::writeBytes("Scenes/Odd/a-ZoneInfo.xml",
                        std::string("<ZoneInfo><Zone><Name>Door</Name></Zone></ZoneInfo>"));
    ASSERT_TRUE(scene().Load("Odd"));
    WindowDriver& driver = show();
    for (const int branch : {1, 2, 3, 4, 5, 0, 5, 4, 3, 2, 1, 0}) {
        driver.pick(u"ComboBranchName", branch);
        driver.click(u"EditBranchName");
        driver.click(u"ComboVideoName");
        driver.press(platform::Key::escape);
        const int rows = driver.get<toolkit::CListUI>(u"BranchList").GetCount();
        for (int row = 0; row < rows; ++row) {
            for (const auto* combo : {u"ComboConditions", u"ComboParameter", u"ComboBranches"}) {
                toolkit::CControlUI& shown = test::inRow(driver, u"BranchList", row, combo);
                driver.click(shown);
                driver.press(platform::Key::escape);
                driver.wheel(WindowDriver::middleOf(shown), -1);
            }
        }
        for (int stop = 0; stop < 40; ++stop) {
            driver.press(platform::Key::tab);
        }
    }
    driver.click(u"ButtonSave");
    EXPECT_EQ(readBytes("Scenes/Odd/Scene.xml"), bytes);
}

TEST_F(BranchEditor, AFailedSaveIsShownUntilTheNextGoodOne) {
    makeScene({"Alarm"});
    support::makeFolder("Scenes/Fire drill/Scene.xml");
    WindowDriver& driver = show();
    const std::u16string usual = driver.get(u"LabelStatus").GetText();
    EXPECT_EQ(usual, u"Changes are kept in memory until you press Save.");
    driver.click(u"ButtonSave");
    const std::u16string shown = driver.get(u"LabelStatus").GetText();
    EXPECT_EQ(shown.substr(0, 11), u"Not saved: ");
    EXPECT_GT(shown.size(), 11U);
    // In a label of its own, which stands out.
    EXPECT_EQ(driver.get(u"LabelProblem").GetText(), shown);
    EXPECT_TRUE(driver.get(u"LabelProblem").IsVisible());
    EXPECT_FALSE(driver.get(u"LabelStatus").IsVisible());
    // Another window of the same scene still tells.
    m_driver.reset();
    m_window.reset();
    show();
    EXPECT_EQ(m_driver->get(u"LabelStatus").GetText(), shown);
    std::filesystem::remove("Scenes/Fire drill/Scene.xml");
    m_driver->click(u"ButtonSave");
    EXPECT_EQ(m_driver->get(u"LabelStatus").GetText(), u"Saved at 03:07:41 PM. " + usual);
    EXPECT_FALSE(m_driver->get(u"LabelProblem").IsVisible());
    EXPECT_TRUE(m_driver->get(u"LabelStatus").IsVisible());
}

struct Leaving {
    Answer answer;
    bool leaves;
};

TEST_F(BranchEditor, ExitAsksAndADismissalMeansYes) {
    for (const Leaving& test : {Leaving{Answer::no, false}, Leaving{Answer::escape, false},
                                Leaving{Answer::yes, true}, Leaving{Answer::close, true}}) {
        makeScene({"Alarm"});
        m_state.quit = false;
        WindowDriver& driver = show();
        std::string asked;
        driver.clickThen(u"ButtonExit", answering(test.answer, &asked));
        EXPECT_EQ(asked, "Exit?|Are you sure you want to exit?");
        EXPECT_EQ(m_state.quit, test.leaves);
        EXPECT_EQ(isClosed(*m_window), test.leaves);
    }
}

TEST_F(BranchEditor, AnExitQuestionThatCannotBeAskedMeansYes) {
    makeScene({"Alarm"});
    WindowDriver& driver = show();
    std::filesystem::remove("UI/Confirmation.xml");
    driver.click(u"ButtonExit");
    EXPECT_TRUE(m_state.quit);
    EXPECT_FALSE(m_log.errors().empty());
}

TEST_F(BranchEditor, TheWindowTakesNoInputAndStaysWhileItAsks) {
    makeScene({"Alarm"});
    WindowDriver& driver = show();
    driver.clickThen(u"ButtonExit", [&] {
        test::click(driver.native(), WindowDriver::middleOf(driver.get(u"ButtonAddBranch")));
        test::input().requestClose(driver.native());
        test::pump();
        EXPECT_EQ(scene().branchCount(), 1);
        answering(Answer::no)();
    });
    EXPECT_FALSE(isClosed(*m_window));
    driver.click(u"ButtonAddBranch");
    EXPECT_EQ(scene().branchCount(), 2);
}

TEST_F(BranchEditor, ClosingTheWindowSetsNoFlag) {
    makeScene({"Alarm"});
    WindowDriver& driver = show();
    test::input().requestClose(driver.native());
    test::pump();
    EXPECT_TRUE(isClosed(*m_window));
    EXPECT_FALSE(m_state.quit);
    EXPECT_FALSE(m_state.zoneEditRequest);
}

TEST_F(BranchEditor, OffersOnlyWhatCanBeDone) {
    makeScene({});
    WindowDriver& driver = show();
    const auto enabled = [&](std::u16string_view name) { return driver.get(name).IsEnabled(); };
    for (const auto* name :
         {u"ComboBranchName", u"EditBranchName", u"CheckFirst", u"ComboVideoName",
          u"ButtonEditZones", u"ButtonAddAction", u"ButtonRemoveAction"}) {
        EXPECT_FALSE(enabled(name)) << core::storedText(name);
    }
    for (const auto* name : {u"ButtonSave", u"ButtonExit", u"ButtonAddBranch", u"ButtonAddVideo"}) {
        EXPECT_TRUE(enabled(name)) << core::storedText(name);
    }
    EXPECT_TRUE(driver.get(u"EmptyHeading").IsVisible());
    EXPECT_EQ(driver.get(u"EmptyHeading").GetText(), u"No branches yet");
    EXPECT_EQ(driver.get(u"EmptyLine").GetText(), u"Press Add Branch to start the scene.");

    driver.click(u"ButtonAddBranch");
    EXPECT_TRUE(enabled(u"ComboBranchName"));
    EXPECT_TRUE(enabled(u"ButtonAddAction"));
    EXPECT_FALSE(enabled(u"ButtonEditZones")) << "no video is chosen";
    EXPECT_FALSE(enabled(u"ButtonRemoveAction"));
    EXPECT_EQ(driver.get(u"EmptyHeading").GetText(), u"No actions yet");
    EXPECT_EQ(driver.get(u"EmptyLine").GetText(),
              u"Press Add Action to say which branch plays next.");

    driver.click(u"ButtonAddAction");
    EXPECT_FALSE(driver.get(u"EmptyHeading").IsVisible());
    EXPECT_FALSE(driver.get(u"EmptyLine").IsVisible());
    EXPECT_FALSE(enabled(u"ButtonRemoveAction")) << "no row is chosen";
    driver.click(test::inRow(driver, u"BranchList", 0, u"CheckImmediate"));
    EXPECT_TRUE(enabled(u"ButtonRemoveAction"));
}

TEST_F(BranchEditor, WithoutComponentsThereIsNoWindow) {
    m_gui.library.fails = true;
    EXPECT_EQ(ui::BranchList::create(context()), nullptr);
    m_gui.library.fails = false;
    makeScene({"Alarm"});
    show();
    EXPECT_EQ(m_gui.library.uses, 1);
    m_driver.reset();
    m_window.reset();
    EXPECT_EQ(m_gui.library.uses, 0);
}

} // namespace
