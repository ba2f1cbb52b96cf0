// The action list of the branch editor: rows, what they offer, and how they write back.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "core/Services.h"
#include "core/Text.h"
#include "core/Translations.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/windows/Answering.h"
#include "tests/ui/BranchListFixture.h"

namespace {

using test::Answer;
using test::answering;
using test::inRow;
using test::itemsOf;
using test::Texts;

constexpr const char16_t* kList = u"BranchList";

/// A scene of two branches with a video each; all rows belong to the first.
class ActionList : public test::BranchEditorTest {
protected:
    ActionList() {
        makeScene({"Alarm", "Lift"}, {"door.ogv", "lift.ogv"});
        writeZones("door", {"Handle", "Window"});
        writeZones("lift", {"Button"});
    }
};

Texts capitals() {
    Texts letters;
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
        letters.emplace_back(1, letter);
    }
    return letters;
}

TEST_F(ActionList, ShowsOneRowForEachAction) {
    const Texts zones{u"Handle", u"Window"};
    const struct {
        int type;
        std::string parameter;
        std::string target;
        std::u16string condition;
        Texts parameters;
        std::u16string shownParameter;
        std::u16string shownTarget;
    } rows[] = {
        {0, "", "Lift", u"Standard", {}, u"", u"Lift"},
        {1, "L", "Alarm", u"Tastendruck", capitals(), u"L", u"Alarm"},
        {1, "l", "Alarm", u"Tastendruck", capitals(), u"", u"Alarm"},
        {2, "Window", "gone", u"Zone", zones, u"Window", u""},
        {2, "window", "", u"Zone", zones, u"", u""},
        {3, "", "Alarm", u"Zufall", {}, u"", u"Alarm"},
    };
    m_services.translations = core::Translations::create("Translations.ini", "German");
    for (const auto& row : rows) {
        addAction(row.type, row.parameter, row.target);
    }
    show();
    ASSERT_EQ(actions().GetCount(), static_cast<int>(std::size(rows)));
    int number = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(number);
        const auto& conditions = combo(number, u"ComboConditions");
        EXPECT_EQ(itemsOf(conditions), (Texts{u"Standard", u"Tastendruck", u"Zone", u"Zufall"}));
        EXPECT_EQ(conditions.GetText(), row.condition);
        const auto& parameters = combo(number, u"ComboParameter");
        EXPECT_EQ(parameters.IsEnabled(), !row.parameters.empty());
        EXPECT_EQ(itemsOf(parameters), row.parameters);
        EXPECT_EQ(parameters.GetText(), row.shownParameter);
        const auto& targets = combo(number, u"ComboBranches");
        EXPECT_EQ(itemsOf(targets), (Texts{u"Alarm", u"Lift"}));
        EXPECT_EQ(targets.GetText(), row.shownTarget);
        ++number;
    }
}

TEST_F(ActionList, RowsLookAndAreNamedAsTheSkinExpects) {
    addAction(1, "L", "Alarm").SetImmediate(true);
    show();
    toolkit::CControlUI& row = *actions().GetItemAt(0);
    EXPECT_EQ(row.GetName(), u"ListContainer");
    EXPECT_EQ(row.GetPos().height(), 33);
    EXPECT_EQ(inRow(*m_driver, kList, 0, u"ListItem").GetUserData(), u"0");
    EXPECT_TRUE(immediate(0).IsSelected());
    const struct {
        const char16_t* name;
        const char16_t* toolTip;
        platform::Rect place; ///< from the row's top left corner
        int dropHeight;
    } controls[] = {
        {u"ComboConditions", u"Action condition", platform::Rect::at(5, 4, 200, 25), 120},
        {u"ComboParameter", u"Action parameter", platform::Rect::at(215, 4, 200, 25), 540},
        {u"ComboBranches", u"Branch to activate", platform::Rect::at(425, 4, 200, 25), 540},
        {u"CheckImmediate", u"Activate immediately", platform::Rect::at(724, 8, 18, 18), 0},
    };
    for (const auto& control : controls) {
        SCOPED_TRACE(core::storedText(control.name));
        toolkit::CControlUI& found = inRow(*m_driver, kList, 0, control.name);
        EXPECT_EQ(found.GetToolTip(), control.toolTip);
        EXPECT_EQ(found.GetPos().translated(-row.GetPos().left, -row.GetPos().top), control.place);
        if (const auto* combo = toolkit::controlCast<toolkit::CComboUI>(&found)) {
            EXPECT_EQ(combo->GetDropBoxSize(), (platform::Size{0, control.dropHeight}));
            EXPECT_EQ(combo->itemStyle().textPadding, (platform::Rect{5, 1, 5, 1}));
        }
    }
}

TEST_F(ActionList, AnotherConditionRefillsTheParametersAndKeepsTheStoredOne) {
    scene::Action& action = addAction(1, "L", "Lift");
    show();
    std::string stored = "L";
    for (const auto& [condition, offered] :
         {std::pair<int, Texts>{2, {u"Handle", u"Window"}}, {3, {}}, {1, capitals()}, {0, {}}}) {
        SCOPED_TRACE(condition);
        m_driver->pick(combo(0, u"ComboConditions"), condition);
        auto& parameters = combo(0, u"ComboParameter");
        EXPECT_EQ(action.Type(), condition);
        EXPECT_EQ(itemsOf(parameters), offered);
        EXPECT_EQ(parameters.GetText(), u"");
        EXPECT_EQ(parameters.IsEnabled(), !offered.empty());
        EXPECT_EQ(action.Parameter(), stored);
        if (!offered.empty()) {
            m_driver->pick(parameters, static_cast<int>(offered.size()) - 1);
            stored = core::storedText(offered.back());
            EXPECT_EQ(action.Parameter(), stored);
        }
    }
}

TEST_F(ActionList, EachRowWritesItsOwnAction) {
    scene().renameBranch(0, "");
    scene::Action* actions[] = {&addAction(0, "", "Lift"), &addAction(0), &addAction(0)};
    show();
    m_driver->pick(combo(0, u"ComboBranches"), 0);
    m_driver->pick(combo(1, u"ComboBranches"), 1);
    m_driver->click(immediate(2));
    m_driver->pick(combo(2, u"ComboConditions"), 3);
    EXPECT_EQ(actions[0]->BranchID(), "Lift") << "an empty name is no target";
    EXPECT_EQ(actions[1]->BranchID(), "Lift");
    EXPECT_EQ(actions[2]->BranchID(), "");
    EXPECT_FALSE(actions[1]->Immediate());
    EXPECT_TRUE(actions[2]->Immediate());
    EXPECT_EQ(actions[2]->Type(), 3);
    m_driver->click(immediate(2));
    EXPECT_FALSE(actions[2]->Immediate());
}

TEST_F(ActionList, FramesTheTargetBoxWhileItsBranchIsMissing) {
    addAction(0, "", "gone");
    addAction(0, "", "Lift");
    addAction(0);
    show();
    const auto edge = [this](int row) {
        const platform::Rect box = combo(row, u"ComboBranches").GetPos();
        return m_driver->pixel({(box.left + box.right) / 2, box.top + 1});
    };
    const std::uint32_t usual = edge(1);
    EXPECT_NE(edge(0), usual);
    EXPECT_EQ(edge(2), usual) << "no branch chosen yet";
    m_driver->pick(combo(0, u"ComboBranches"), 0);
    m_driver->click(u"EditBranchName"); // no highlight on the box
    EXPECT_EQ(edge(0), usual);
    scene().renameBranch(1, "Stairs");
    show();
    EXPECT_NE(edge(1), usual);
}

TEST_F(ActionList, WhatIsPickedIsStoredByteForByte) {
    const std::string bad = "b\xFF\xC3";
    const std::vector<std::string> zones{"50 % %s \"x\"", "\xF0\x9F\x94\xA5", bad};
    // Not every system's disk holds a name that is no text.
    support::FaultyFileSystem files(*core::services().fileSystem);
    files.showAs(bad, "b-d");
    const core::ServicesOverride override{
        {&files, core::services().clock, core::services().process}};
    writeZones("b-d", zones);
    makeScene({"Alarm", bad}, {bad + ".ogv", "lift.ogv"});
    scene::Action& action = addAction(2);
    show();
    m_driver->pick(u"ComboVideoName", 1);
    m_driver->pick(u"ComboVideoName", 0);
    EXPECT_EQ(scene().branchFilename(0), bad + ".ogv");
    m_driver->pick(combo(0, u"ComboBranches"), 1);
    EXPECT_EQ(action.BranchID(), bad);
    for (int zone = 0; zone < 3; ++zone) {
        m_driver->pick(combo(0, u"ComboParameter"), zone);
        EXPECT_EQ(action.Parameter(), zones[static_cast<std::size_t>(zone)]);
    }
}

TEST_F(ActionList, AddsToTheEndOfTheBranchOnShow) {
    addAction(1, "L");
    show();
    m_driver->click(u"ButtonAddAction");
    ASSERT_EQ(actions().GetCount(), 2);
    EXPECT_EQ(actions().GetCurSel(), 1);
    EXPECT_TRUE(combo(1, u"ComboConditions").IsFocused());
    const auto action = scene().action(0, 1);
    EXPECT_EQ(action->Type(), 0);
    EXPECT_EQ(action->BranchID(), "");
    EXPECT_FALSE(action->Immediate());
    m_driver->pick(u"ComboBranchName", 1);
    EXPECT_EQ(actions().GetCount(), 0);
    m_driver->click(u"ButtonAddAction");
    EXPECT_TRUE(scene().action(1, 0));
}

TEST_F(ActionList, RemovesTheChosenRowAfterAYes) {
    for (const char* key : {"A", "B", "C"}) {
        addAction(1, key);
    }
    show();
    for (const Answer answer : {Answer::no, Answer::close, Answer::escape, Answer::yes}) {
        // A click on a control of the row chooses the row.
        m_driver->click(immediate(1));
        std::string asked;
        m_driver->clickThen(u"ButtonRemoveAction", answering(answer, &asked));
        EXPECT_EQ(asked, "Remove Action?|Are you sure you want to remove the action?");
        EXPECT_EQ(actions().GetCount(), answer == Answer::yes ? 2 : 3);
    }
    EXPECT_EQ(scene().action(0, 0)->Parameter(), "A");
    EXPECT_FALSE(isEnabled(u"ButtonRemoveAction"));
    // The row below has moved up and knows it.
    m_driver->pick(combo(1, u"ComboParameter"), 3);
    EXPECT_EQ(scene().action(0, 1)->Parameter(), "D");
}

TEST_F(ActionList, ChoosingAVideoOffersItsZonesAndKeepsTheParameter) {
    const scene::Action& zone = addAction(2, "Window");
    addAction(1, "L");
    show();
    m_driver->pick(u"ComboVideoName", 1);
    EXPECT_EQ(itemsOf(combo(0, u"ComboParameter")), Texts{u"Button"});
    EXPECT_EQ(combo(0, u"ComboParameter").GetText(), u"");
    EXPECT_EQ(zone.Parameter(), "Window");
    EXPECT_EQ(combo(1, u"ComboParameter").GetText(), u"L");
    // A video without zone files offers none, quietly.
    std::filesystem::remove("Scenes/Fire/lift-ZoneInfo.xml");
    show();
    EXPECT_TRUE(combo(0, u"ComboParameter").IsEnabled());
    EXPECT_EQ(combo(0, u"ComboParameter").GetCount(), 0);
    const auto* const hint =
        u"This video has no zones to choose from yet: draw them with Edit Zones.";
    EXPECT_EQ(m_driver->textOf(u"LabelStatus"), hint);
    m_driver->pick(combo(0, u"ComboConditions"), 3);
    EXPECT_NE(m_driver->textOf(u"LabelStatus"), hint);
    EXPECT_TRUE(m_log.errors().empty());
}

TEST_F(ActionList, StaysWhereTheWorkIsInALongList) {
    for (int i = 0; i < 40; ++i) {
        addAction(1, "A");
    }
    show();
    const auto isInView = [this](int row) {
        m_window->GetPaintManager().UpdateLayout();
        const platform::Rect list = actions().GetPos();
        const platform::Rect check = immediate(row).GetPos();
        return check.top >= list.top + 30 && check.bottom <= list.bottom;
    };
    m_driver->click(u"ButtonAddAction");
    EXPECT_TRUE(isInView(40)) << "the new one can be edited at once";
    m_driver->click(immediate(35));
    m_driver->clickThen(u"ButtonRemoveAction", answering(Answer::yes));
    EXPECT_TRUE(isInView(35));
    EXPECT_EQ(actions().GetCount(), 40);
    // A press ends the typing of a name, which makes the rows anew, and reaches the row aimed at.
    m_driver->retype(u"EditBranchName", u"Smoke");
    m_driver->click(immediate(34));
    EXPECT_EQ(scene().branchID(0), "Smoke");
    EXPECT_TRUE(scene().action(0, 34)->Immediate());
    EXPECT_TRUE(isInView(34));
}

} // namespace
