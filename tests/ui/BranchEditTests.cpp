// Branches and actions that are moved, copied and removed, and who leads where.
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/Text.h"
#include "tests/support/windows/Answering.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/controls/MenuPopup.h"

namespace {

using platform::Key;
using scene::Action;
using test::Texts;

constexpr platform::Modifiers kControl{.control = true};
constexpr platform::Modifiers kControlShift{.shift = true, .control = true};

class BranchEdits : public test::BranchEditorTest {
protected:
    BranchEdits() {
        makeScene({"Alarm", "Lift", "Exit"}, {"a.ogv", "b.ogv", ""});
        for (const char* key : {"A", "B", "C", "D"}) {
            addAction(Action::kKeypressAction, key, "Lift");
        }
        addAction(Action::kDefaultAction, {}, "Alarm", 1);
        m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
        show();
    }
    std::string form() { return session().savedForm(); }
    /// The keys of the shown branch's actions, those that are chosen in brackets.
    std::string rows() {
        std::string text;
        for (int row = 0; row < actions().GetCount(); ++row) {
            const std::string key = core::storedText(combo(row, u"ComboParameter").GetText());
            text += actions().isSelected(row) ? "[" + key + "]" : key;
        }
        return text;
    }
    std::u16string offer() {
        return isVisible(u"PanelNotice") ? m_driver->textOf(u"LabelStrip") : std::u16string();
    }
};

TEST_F(BranchEdits, AreOneStepEachForSeveralRowsToo) {
    const auto remove = [this] {
        std::string asked;
        m_driver->clickThen(u"ButtonRemoveAction", test::answering(test::Answer::yes, &asked));
        EXPECT_EQ(asked, "Remove Action?|Are you sure you want to remove the action?");
    };
    const struct {
        std::string what;
        std::vector<std::pair<int, platform::Modifiers>> clicks;
        std::function<void()> act;
        std::string rows;
        std::string undone;
    } cases[] = {
        {"up", {{2, {}}}, [this] { m_driver->press(Key::up, kControl); }, "A[C]BD", "AB[C]D"},
        {"down by button",
         {{2, {}}},
         [this] { m_driver->click(u"ButtonActionDown"); },
         "ABD[C]",
         "AB[C]D"},
        {"several",
         {{0, {}}, {2, kControl}},
         [this] { m_driver->press(Key::down, kControl); },
         "B[A]D[C]",
         "[A]B[C]D"},
        {"copy by button",
         {{1, {}}},
         [this] { m_driver->click(u"ButtonDuplicateAction"); },
         "AB[B]CD",
         "A[B]CD"},
        {"copy several",
         {{0, {}}, {1, {.shift = true}}},
         [this] { m_driver->press(Key::d, kControl); },
         "AB[A][B]CD",
         "[A][B]CD"},
        {"remove several", {{0, {}}, {2, kControl}}, remove, "BD", "[A]B[C]D"},
    };
    const std::string before = form();
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        for (const auto& [row, held] : test.clicks) {
            const platform::Rect place = actions().GetItemAt(row)->GetPos();
            m_driver->click(platform::Point{place.right - 20, place.top + 5}, held);
        }
        test.act();
        EXPECT_EQ(rows(), test.rows);
        const std::string after = form();
        m_driver->press(Key::z, kControl);
        EXPECT_EQ(form(), before);
        EXPECT_EQ(rows(), test.undone);
        m_driver->press(Key::y, kControl);
        EXPECT_EQ(form(), after);
        EXPECT_TRUE(test.what.starts_with("remove") || rows() == test.rows);
        m_driver->press(Key::z, kControl);
    }
    m_driver->click(immediate(0));
    const std::string now = form();
    EXPECT_FALSE(isEnabled(u"ButtonActionUp"));
    m_driver->press(Key::up, kControl);
    EXPECT_EQ(form(), now) << "the first one goes no further";
    m_driver->manager().SetFocus(&combo(1, u"ComboBranches"));
    m_driver->press(Key::down, kControl);
    EXPECT_EQ(rows(), "AC[B]D") << "the row with the keyboard, though another is chosen";
    EXPECT_TRUE(combo(2, u"ComboBranches").IsFocused());
    m_driver->manager().SetFocus(&combo(0, u"ComboBranches"));
    m_driver->press(Key::menu);
    m_driver->press(Key::end);
    m_driver->pressThen(Key::enter, test::answering(test::Answer::yes));
    EXPECT_EQ(rows(), "CBD") << "removing, too";
    actions().SelectItem(-1);
    m_driver->manager().SetFocus(&actions());
    m_driver->press(Key::menu);
    const auto* menu = toolkit::MenuPopup::of(m_driver->manager()).menu();
    ASSERT_NE(menu, nullptr);
    EXPECT_GE(menu->GetPos().top, actions().GetPos().top) << "inside a list without a chosen row";
}

TEST_F(BranchEdits, WriteWhatTheSameEditsByHandWrite) {
    m_driver->pick(u"ComboBranchName", 2);
    m_driver->click(u"ButtonAddBranch");
    m_driver->enter(u"EditBranchName", u"Lift 2");
    m_driver->pick(u"ComboVideoName", 1);
    m_driver->click(u"ButtonAddAction");
    m_driver->pick(combo(0, u"ComboBranches"), 0);
    m_driver->pick(u"ComboBranchName", 0);
    m_driver->click(immediate(3));
    m_driver->clickThen(u"ButtonRemoveAction", test::answering(test::Answer::yes));
    const std::string byHand = form();
    while (session().undo()) {
    }
    m_driver->pick(u"ComboBranchName", 1);
    m_driver->click(u"ButtonDuplicateBranch");
    EXPECT_EQ(m_driver->textOf(u"EditBranchName"), u"Lift 2");
    m_driver->press(Key::down, kControlShift);
    EXPECT_FALSE(isEnabled(u"ButtonBranchDown"));
    m_driver->pick(u"ComboBranchName", 0);
    m_driver->click(immediate(3));
    m_driver->press(Key::d, kControl);
    m_driver->press(Key::d, kControl);
    m_driver->click(immediate(3));
    m_driver->click(immediate(5), {.shift = true});
    m_driver->clickThen(u"ButtonRemoveAction", test::answering(test::Answer::yes));
    EXPECT_EQ(form(), byHand);
}

TEST_F(BranchEdits, ARemovedBranchIsOfferedBackUntilTheNextStep) {
    const std::string before = form();
    m_driver->pick(u"ComboBranchName", 1);
    m_driver->click(u"ButtonRemoveBranch");
    EXPECT_EQ(offer(), u"Branch \"Lift\" removed. 4 actions named it.");
    EXPECT_EQ(m_driver->textOf(u"EditBranchName"), u"Exit");
    EXPECT_EQ(session().action(0, 0).BranchID(), "Lift") << "targets stay as they are";
    m_driver->click(u"ButtonNoticeUndo");
    EXPECT_EQ(form(), before);
    EXPECT_EQ(m_driver->textOf(u"EditBranchName"), u"Lift");
    EXPECT_EQ(offer(), u"");
    m_driver->pick(u"ComboBranchName", 0);
    m_driver->click(u"ButtonRemoveBranch");
    EXPECT_EQ(session().firstBranch(), "Lift");
    EXPECT_TRUE(test::isChecked(*m_driver, u"CheckFirst"));
    EXPECT_EQ(offer(), u"Branch \"Alarm\" removed. 1 action named it.");
    m_driver->click(u"ButtonAddBranch");
    EXPECT_EQ(offer(), u"");
    for (int left = 3; left > 0; --left) {
        m_driver->click(u"ButtonRemoveBranch");
    }
    EXPECT_EQ(offer(), u"Branch \"Lift\" removed.");
    EXPECT_FALSE(isEnabled(u"ButtonRemoveBranch") || isEnabled(u"ButtonDuplicateBranch"));
    EXPECT_EQ(m_driver->textOf(u"EmptyHeading"), u"No branches yet");
    while (session().history().canUndo()) {
        m_driver->press(Key::z, kControl);
    }
    EXPECT_EQ(form(), before);
}

TEST_F(BranchEdits, WhoLeadsHereIsCountedListedAndShown) {
    const auto leads = [this] { return m_driver->textOf(u"ButtonLeadsHere"); };
    EXPECT_EQ(leads(), u"1 leads here");
    m_driver->pick(u"ComboBranchName", 2);
    EXPECT_EQ(leads(), u"0 lead here");
    EXPECT_FALSE(isEnabled(u"ButtonLeadsHere"));
    m_driver->pick(u"ComboBranchName", 1);
    EXPECT_EQ(leads(), u"4 lead here");
    m_driver->click(u"ButtonLeadsHere");
    EXPECT_EQ(test::menuOf(*m_driver), (Texts{u"Alarm, action 1", u"Alarm, action 2",
                                              u"Alarm, action 3", u"Alarm, action 4"}));
    m_driver->press(Key::end);
    m_driver->press(Key::enter);
    EXPECT_EQ(m_driver->textOf(u"EditBranchName"), u"Alarm");
    EXPECT_EQ(rows(), "ABC[D]");
    m_driver->pick(combo(3, u"ComboBranches"), 0);
    EXPECT_EQ(leads(), u"2 lead here");
    for (int i = 0; i < 30; ++i) {
        session().duplicateActions(0, {3});
    }
    m_driver->click(u"ButtonLeadsHere");
    EXPECT_EQ(test::menuOf(*m_driver).back(), u"and 14 more");
}

} // namespace
