// The branch editor: branches, their names, the first branch.
#include <string>
#include <vector>

#include "core/Text.h"
#include "tests/support/windows/Answering.h"
#include "tests/ui/BranchListFixture.h"

namespace {

using support::readBytes;
using test::Answer;
using test::answering;
using test::isChecked;
using test::itemsOf;
using test::typeInto;
using test::WindowDriver;
using Texts = std::vector<std::u16string>;

class BranchEditor : public test::BranchEditorTest {};

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
