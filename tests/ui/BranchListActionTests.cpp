// The action list of the branch editor: rows, what they offer, and how they write back.
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "core/Text.h"
#include "tests/support/windows/Answering.h"
#include "tests/support/windows/EditorTest.h"
#include "toolkit/COptionUI.h"
#include "ui/BranchList.h"

namespace {

using test::Answer;
using test::answering;
using test::inRow;
using test::itemsOf;
using toolkit::CComboUI;
using Texts = std::vector<std::u16string>;

constexpr const char16_t* kList = u"BranchList";
constexpr int kZone = 2;

/// A scene of two branches; the first has the zones of "door.ogv" and one action of each type.
class ActionList : public test::WindowTest<ui::BranchList> {
protected:
    ActionList() {
        scene().newScene("Fire");
        scene().AddBranch();
        scene().AddBranch();
        scene().renameBranch(0, "Alarm");
        scene().renameBranch(1, "Lift");
        scene().setBranchFilename(0, "door.ogv");
        scene().setBranchFilename(1, "lift.ogv");
        writeZones("door", {"Handle", "Window"});
        writeZones("lift", {"Button"});
    }
    static void writeZones(const std::string& video, const std::vector<std::string>& names) {
        std::string text = "<ZoneInfo>\n\t<VideoWidth>1280</VideoWidth>\n";
        for (const std::string& name : names) {
            text += "\t<Zone>\n\t\t<Name>" + name + "</Name>\n\t</Zone>\n";
        }
        support::writeBytes("Scenes/Fire/" + video + "-ZoneInfo.xml", text + "</ZoneInfo>\n");
    }
    scene::Action& addAction(int type, const std::string& parameter = {},
                             const std::string& target = {}, bool immediate = false) {
        const auto action = scene::Action::create();
        action->SetType(type);
        action->SetParameter(parameter);
        action->SetBranchID(target);
        action->SetImmediate(immediate);
        scene().addAction(0, action);
        return *action;
    }
    CComboUI& combo(int row, std::u16string_view name) {
        return inRow<CComboUI>(*m_driver, kList, row, name);
    }
    toolkit::COptionUI& immediate(int row) {
        return inRow<toolkit::COptionUI>(*m_driver, kList, row, u"CheckImmediate");
    }
    int rows() { return m_driver->get<toolkit::CListUI>(kList).GetCount(); }
};

Texts capitals() {
    Texts letters;
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
        letters.emplace_back(1, letter);
    }
    return letters;
}

struct Row {
    const char* what;
    int type;
    std::string parameter;
    std::string target;
    std::u16string condition;
    bool parameterEnabled;
    Texts parameters;
    std::u16string shownParameter;
    std::u16string shownTarget;
};

TEST_F(ActionList, ShowsOneRowForEachAction) {
    const Row cases[] = {
        {"default", 0, "", "Lift", u"Default", false, {}, u"", u"Lift"},
        {"a default with a left-over parameter", 0, "A", "", u"Default", false, {}, u"", u""},
        {"key", 1, "L", "Alarm", u"Keypress", true, capitals(), u"L", u"Alarm"},
        {"a key that is not on offer", 1, "l", "Alarm", u"Keypress", true, capitals(), u"",
         u"Alarm"},
        {"zone", 2, "Window", "gone", u"Zone", true, {u"Handle", u"Window"}, u"Window", u""},
        {"a zone that is gone",
         2,
         "window",
         "Lift",
         u"Zone",
         true,
         {u"Handle", u"Window"},
         u"",
         u"Lift"},
        {"random", 3, "", "Alarm", u"Random", false, {}, u"", u"Alarm"},
    };
    for (const Row& row : cases) {
        addAction(row.type, row.parameter, row.target);
    }
    show();
    ASSERT_EQ(rows(), static_cast<int>(std::size(cases)));
    int number = 0;
    for (const Row& row : cases) {
        const CComboUI& conditions = combo(number, u"ComboConditions");
        EXPECT_EQ(itemsOf(conditions), (Texts{u"Default", u"Keypress", u"Zone", u"Random"}));
        EXPECT_EQ(conditions.GetText(), row.condition) << row.what;
        const CComboUI& parameters = combo(number, u"ComboParameter");
        EXPECT_EQ(parameters.IsEnabled(), row.parameterEnabled) << row.what;
        EXPECT_EQ(itemsOf(parameters), row.parameters) << row.what;
        EXPECT_EQ(parameters.GetText(), row.shownParameter) << row.what;
        const CComboUI& targets = combo(number, u"ComboBranches");
        EXPECT_EQ(itemsOf(targets), (Texts{u"Alarm", u"Lift"})) << row.what;
        EXPECT_EQ(targets.GetText(), row.shownTarget) << row.what;
        ++number;
    }
}

TEST_F(ActionList, RowsLookAndAreNamedAsTheSkinExpects) {
    addAction(1, "L", "Alarm", true);
    show();
    toolkit::CControlUI& row = *m_driver->get<toolkit::CListUI>(kList).GetItemAt(0);
    EXPECT_EQ(row.GetName(), u"ListContainer");
    EXPECT_EQ(row.GetPos().height(), 33);
    EXPECT_EQ(inRow(*m_driver, kList, 0, u"ListItem").GetUserData(), u"0");
    const struct {
        const char16_t* name;
        const char16_t* toolTip;
        platform::Rect place; ///< from the row's top left corner
    } controls[] = {
        {u"ComboConditions", u"Action condition", platform::Rect::at(5, 4, 200, 25)},
        {u"ComboParameter", u"Action parameter", platform::Rect::at(215, 4, 200, 25)},
        {u"ComboBranches", u"Branch to activate", platform::Rect::at(425, 4, 200, 25)},
        {u"CheckImmediate", u"Activate immediately", platform::Rect::at(724, 8, 18, 18)},
    };
    for (const auto& control : controls) {
        const toolkit::CControlUI& found = inRow(*m_driver, kList, 0, control.name);
        const platform::Rect& place = found.GetPos();
        EXPECT_EQ(found.GetToolTip(), control.toolTip);
        EXPECT_EQ(place.translated(-row.GetPos().left, -row.GetPos().top), control.place)
            << core::storedText(control.name) << " at " << place.left - row.GetPos().left << ","
            << place.top - row.GetPos().top << " " << place.width() << "x" << place.height();
    }
    EXPECT_EQ(combo(0, u"ComboConditions").GetDropBoxSize(), (platform::Size{0, 120}));
    EXPECT_EQ(combo(0, u"ComboParameter").GetDropBoxSize(), (platform::Size{0, 540}));
    EXPECT_EQ(combo(0, u"ComboBranches").GetDropBoxSize(), (platform::Size{0, 540}));
    EXPECT_TRUE(immediate(0).IsSelected());
}

TEST_F(ActionList, ConditionsAreTranslated) {
    m_services.translations = core::Translations::create("Translations.ini", "German");
    addAction(0);
    show();
    const Texts items = itemsOf(combo(0, u"ComboConditions"));
    ASSERT_EQ(items.size(), 4U);
    for (int type = 0; type < 4; ++type) {
        const char* keys[] = {"Default", "Keypress", "Zone", "Random"};
        EXPECT_EQ(core::storedText(items[static_cast<std::size_t>(type)]),
                  m_services.translations->translate(keys[type]));
    }
    EXPECT_NE(items[3], u"Random");
}

TEST_F(ActionList, AnotherConditionRefillsTheParametersAndKeepsTheStoredOne) {
    scene::Action& action = addAction(1, "L", "Lift");
    show();
    m_driver->pick(combo(0, u"ComboConditions"), kZone);
    EXPECT_EQ(action.Type(), kZone);
    EXPECT_EQ(action.Parameter(), "L");
    EXPECT_EQ(itemsOf(combo(0, u"ComboParameter")), (Texts{u"Handle", u"Window"}));
    EXPECT_EQ(combo(0, u"ComboParameter").GetText(), u"");

    m_driver->pick(combo(0, u"ComboParameter"), 1);
    EXPECT_EQ(action.Parameter(), "Window");
    EXPECT_EQ(action.Type(), kZone);

    m_driver->pick(combo(0, u"ComboConditions"), 3);
    EXPECT_EQ(action.Type(), 3);
    EXPECT_EQ(action.Parameter(), "Window");
    EXPECT_FALSE(combo(0, u"ComboParameter").IsEnabled());
    EXPECT_EQ(combo(0, u"ComboParameter").GetCount(), 0);

    m_driver->pick(combo(0, u"ComboConditions"), 1);
    EXPECT_TRUE(combo(0, u"ComboParameter").IsEnabled());
    EXPECT_EQ(itemsOf(combo(0, u"ComboParameter")), capitals());
    m_driver->pick(combo(0, u"ComboParameter"), 25);
    EXPECT_EQ(action.Parameter(), "Z");
}

TEST_F(ActionList, EachRowWritesItsOwnAction) {
    scene::Action* actions[] = {&addAction(0), &addAction(0), &addAction(0)};
    show();
    m_driver->pick(combo(1, u"ComboBranches"), 1);
    m_driver->click(immediate(2));
    m_driver->pick(combo(2, u"ComboConditions"), 3);
    EXPECT_EQ(actions[0]->BranchID(), "");
    EXPECT_EQ(actions[1]->BranchID(), "Lift");
    EXPECT_EQ(actions[2]->BranchID(), "");
    EXPECT_FALSE(actions[1]->Immediate());
    EXPECT_TRUE(actions[2]->Immediate());
    EXPECT_EQ(actions[2]->Type(), 3);
    m_driver->click(immediate(2));
    EXPECT_FALSE(actions[2]->Immediate());
}

TEST_F(ActionList, ATargetWithAnEmptyNameIsNotTaken) {
    scene::Action& action = addAction(0, "", "Lift");
    scene().renameBranch(0, "");
    show();
    m_driver->pick(combo(0, u"ComboBranches"), 0);
    EXPECT_EQ(action.BranchID(), "Lift");
}

TEST_F(ActionList, RowsCanBeWorkedByKeyboard) {
    scene::Action& action = addAction(0);
    show();
    m_window->GetPaintManager().SetFocus(&combo(0, u"ComboConditions"));
    m_driver->press(platform::Key::down);
    EXPECT_EQ(action.Type(), 1);
    m_driver->press(platform::Key::tab);
    m_driver->type(u"q");
    EXPECT_EQ(action.Parameter(), "Q");
}

TEST_F(ActionList, AddsToTheEnd) {
    addAction(1, "L");
    show();
    m_driver->click(u"ButtonAddAction");
    ASSERT_EQ(rows(), 2);
    const auto action = scene().action(0, 1);
    EXPECT_EQ(action->Type(), 0);
    EXPECT_EQ(action->Parameter(), "");
    EXPECT_EQ(action->BranchID(), "");
    EXPECT_FALSE(action->Immediate());
    EXPECT_EQ(m_driver->get<toolkit::CListUI>(kList).GetCurSel(), -1);
    m_driver->pick(combo(1, u"ComboBranches"), 0);
    EXPECT_EQ(action->BranchID(), "Alarm");
}

TEST_F(ActionList, RemovesTheChosenRowAfterAYes) {
    const struct {
        Answer answer;
        bool removes;
    } cases[] = {
        {Answer::no, false}, {Answer::close, false}, {Answer::escape, false}, {Answer::yes, true}};
    for (const char* key : {"A", "B", "C"}) {
        addAction(1, key);
    }
    show();
    for (const auto& test : cases) {
        // A click on a control of the row chooses the row.
        m_driver->click(inRow(*m_driver, kList, 1, u"CheckImmediate"));
        std::string asked;
        m_driver->clickThen(u"ButtonRemoveAction", answering(test.answer, &asked));
        EXPECT_EQ(asked, "Remove Action?|Are you sure you want to remove the action?");
        EXPECT_EQ(rows(), test.removes ? 2 : 3);
    }
    EXPECT_EQ(scene().action(0, 0)->Parameter(), "A");
    EXPECT_EQ(scene().action(0, 1)->Parameter(), "C");
    EXPECT_FALSE(m_driver->get(u"ButtonRemoveAction").IsEnabled());
    // The rows below have moved up and know it.
    m_driver->pick(combo(1, u"ComboParameter"), 3);
    EXPECT_EQ(scene().action(0, 1)->Parameter(), "D");
}

TEST_F(ActionList, ARemovalThatCannotBeAskedForKeepsTheAction) {
    addAction(0);
    show();
    m_driver->click(immediate(0));
    std::filesystem::remove("UI/Confirmation.xml");
    m_driver->click(u"ButtonRemoveAction");
    EXPECT_EQ(rows(), 1);
}

TEST_F(ActionList, ChoosingAVideoOffersItsZonesAndKeepsTheParameter) {
    scene::Action& zone = addAction(2, "Window");
    scene::Action& key = addAction(1, "L");
    show();
    m_driver->pick(u"ComboVideoName", 1);
    EXPECT_EQ(scene().branchFilename(0), "lift.ogv");
    EXPECT_EQ(itemsOf(combo(0, u"ComboParameter")), Texts{u"Button"});
    EXPECT_EQ(combo(0, u"ComboParameter").GetText(), u"");
    EXPECT_EQ(zone.Parameter(), "Window");
    EXPECT_EQ(combo(1, u"ComboParameter").GetText(), u"L");
    EXPECT_EQ(key.Parameter(), "L");
    // A video without zone files offers none, quietly.
    std::filesystem::remove("Scenes/Fire/lift-ZoneInfo.xml");
    show();
    EXPECT_TRUE(combo(0, u"ComboParameter").IsEnabled());
    EXPECT_EQ(combo(0, u"ComboParameter").GetCount(), 0);
    EXPECT_TRUE(m_log.errors().empty());
}

TEST_F(ActionList, OddZoneNamesAreShownAndStored) {
    writeZones("door", {"50 % %s \"x\"", "\xC3\xA4\xF0\x9F\x94\xA5", std::string(200, 'n')});
    scene::Action& action = addAction(2);
    show();
    const std::string stored[] = {"50 % %s \"x\"", "\xC3\xA4\xF0\x9F\x94\xA5",
                                  std::string(200, 'n')};
    for (int index = 0; index < 3; ++index) {
        m_driver->pick(combo(0, u"ComboParameter"), index);
        EXPECT_EQ(action.Parameter(), stored[index]);
    }
}

TEST_F(ActionList, OtherBranchesShowTheirOwnActions) {
    addAction(1, "L");
    show();
    m_driver->pick(u"ComboBranchName", 1);
    EXPECT_EQ(rows(), 0);
    m_driver->click(u"ButtonAddAction");
    EXPECT_EQ(rows(), 1);
    m_driver->pick(u"ComboBranchName", 0);
    ASSERT_EQ(rows(), 1);
    EXPECT_EQ(combo(0, u"ComboConditions").GetText(), u"Keypress");
}

TEST_F(ActionList, StaysWhereTheWorkIsInALongList) {
    for (int i = 0; i < 40; ++i) {
        addAction(1, "A");
    }
    show();
    const auto isInView = [this](int row) {
        m_window->GetPaintManager().UpdateLayout();
        const platform::Rect list = m_driver->get(kList).GetPos();
        const platform::Rect check = immediate(row).GetPos();
        return check.top >= list.top + 30 && check.bottom <= list.bottom;
    };
    m_driver->click(u"ButtonAddAction");
    EXPECT_TRUE(isInView(40)) << "the new one can be edited at once";
    m_driver->click(immediate(35));
    m_driver->clickThen(u"ButtonRemoveAction", answering(Answer::yes));
    EXPECT_TRUE(isInView(35));
    EXPECT_EQ(rows(), 40);
    // A press ends the typing of a name, which makes the rows anew, and reaches the row aimed at.
    test::typeInto(*m_driver, u"EditBranchName", u"Smoke");
    m_driver->click(immediate(34));
    EXPECT_EQ(scene().branchID(0), "Smoke");
    EXPECT_TRUE(scene().action(0, 34)->Immediate());
    EXPECT_TRUE(isInView(34));
}

TEST_F(ActionList, HoldsManyOfEverything) {
    for (int i = 0; i < 998; ++i) {
        scene().AddBranch();
    }
    std::vector<std::string> zones;
    for (int i = 0; i < 300; ++i) {
        zones.push_back("Zone " + std::to_string(i));
    }
    writeZones("door", zones);
    for (int i = 0; i < 200; ++i) {
        addAction(i % 4, "Zone 299", "New Branch 500");
    }
    show();
    EXPECT_EQ(rows(), 200);
    EXPECT_EQ(combo(199, u"ComboBranches").GetCount(), 1000);
    EXPECT_EQ(combo(199, u"ComboBranches").GetText(), u"New Branch 500");
    EXPECT_EQ(combo(198, u"ComboParameter").GetCount(), 300);
    EXPECT_EQ(combo(198, u"ComboParameter").GetText(), u"Zone 299");
    m_driver->click(u"ButtonAddBranch");
    EXPECT_EQ(m_driver->get<CComboUI>(u"ComboBranchName").GetCount(), 1001);
}

} // namespace
