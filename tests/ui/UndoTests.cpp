// Undo and redo in the branch editor, whether the scene is saved, and the strip's offers.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Text.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/support/windows/Answering.h"
#include "tests/ui/BranchListFixture.h"
#include "ui/SavedState.h"
#include "ui/TimeTexts.h"

namespace {

using platform::Key;
using test::isChecked;
using test::itemsOf;
using test::Texts;

constexpr platform::Modifiers kControl{.control = true};
constexpr platform::Modifiers kControlShift{.shift = true, .control = true};

class Undo : public test::BranchEditorTest {
protected:
    Undo() {
        makeScene({"Alarm", "Lift"}, {"a.ogv", "b.ogv"});
        writeZones("a", {"Door"});
        writeZones("b", {"Handle"});
        for (int i = 0; i < 30; ++i) {
            addAction(2, "Door", "Lift");
        }
        m_services.sceneSession = scene::SceneSession::create(m_services.sceneManager);
        show();
    }
    void undo() { m_driver->press(Key::z, kControl); }
    void redo() { m_driver->press(Key::y, kControl); }
    void save() { m_driver->press(Key::s, kControl); }
    std::u16string state() { return m_driver->textOf(u"LabelState"); }
    std::u16string tip(std::u16string_view button) { return m_driver->get(button).GetToolTip(); }
    /// The branch on show and the scene, as the controls show them.
    Texts shown() {
        Texts texts{m_driver->textOf(u"EditBranchName"), m_driver->textOf(u"ComboVideoName"),
                    isChecked(*m_driver, u"CheckFirst") ? u"first" : u""};
        for (const std::u16string& name : itemsOf(combo(u"ComboBranchName"))) {
            texts.push_back(name);
        }
        for (int row = 0; row < actions().GetCount(); ++row) {
            for (const auto* name : {u"ComboConditions", u"ComboParameter", u"ComboBranches"}) {
                texts.push_back(combo(row, name).GetText());
            }
            texts.emplace_back(immediate(row).IsSelected() ? u"now" : u"");
        }
        return texts;
    }
    bool isInView(int row) {
        m_window->GetPaintManager().UpdateLayout();
        const platform::Rect check = immediate(row).GetPos();
        return check.top >= actions().GetPos().top + 30 &&
               check.bottom <= actions().GetPos().bottom;
    }
};

TEST_F(Undo, TakesBackEachStepWhereItHappenedAndDoesItAgain) {
    const auto pick = [this](const char16_t* name, int item) {
        return [this, name, item] { m_driver->pick(combo(29, name), item); };
    };
    const auto press = [this](Key key, platform::Modifiers held) {
        return [this, key, held] { m_driver->press(key, held); };
    };
    const struct {
        std::u16string name;
        std::function<void()> edit;
        int branch;
        int row;
    } steps[] = {
        {u"immediate", [this] { m_driver->click(immediate(29)); }, 0, 29},
        {u"condition", pick(u"ComboConditions", 1), 0, 29},
        {u"parameter", pick(u"ComboParameter", 3), 0, 29},
        {u"target", pick(u"ComboBranches", 0), 0, 29},
        {u"video", [this] { m_driver->pick(u"ComboVideoName", 1); }, 0, -1},
        {u"rename", [this] { m_driver->enter(u"EditBranchName", u"Fire"); }, 0, -1},
        {u"remove action",
         [this] {
             actions().SelectItem(29);
             m_driver->clickThen(u"ButtonRemoveAction", test::answering(test::Answer::yes));
         },
         0, 29},
        {u"add action", [this] { m_driver->click(u"ButtonAddAction"); }, 0, 29},
        {u"move action", press(Key::up, kControl), 0, 29},
        {u"duplicate action", press(Key::d, kControl), 0, 28},
        {u"move action", press(Key::down, kControl), 0, 29},
        {u"duplicate branch", [this] { m_driver->click(u"ButtonDuplicateBranch"); }, 0, -1},
        {u"move branch", press(Key::down, kControlShift), 1, -1},
        {u"add branch", [this] { m_driver->click(u"ButtonAddBranch"); }, 3, -1},
        {u"first branch", [this] { m_driver->click(u"CheckFirst"); }, 3, -1},
    };
    std::vector<Texts> states{shown()};
    for (const auto& step : steps) {
        if (actions().GetCount() > 0) {
            actions().reveal(immediate(actions().GetCount() - 1));
            m_window->GetPaintManager().UpdateLayout();
        }
        step.edit();
        EXPECT_EQ(tip(u"ButtonUndo"), u"Undo: " + step.name + u" (Ctrl+Z)");
        states.push_back(shown());
    }
    save();
    for (std::size_t at = std::size(steps); at-- > 0;) {
        const auto& [name, edit, branch, row] = steps[at];
        SCOPED_TRACE(core::storedText(name));
        m_driver->pick(u"ComboBranchName", 1);
        at % 2 == 0 ? undo() : m_driver->click(u"ButtonUndo");
        EXPECT_EQ(tip(u"ButtonRedo"), u"Redo: " + name + u" (Ctrl+Y)");
        const int last = session().branchCount() - 1;
        EXPECT_EQ(combo(u"ComboBranchName").GetCurSel(), std::min(branch, last));
        EXPECT_TRUE(branch > 0 || shown() == states[at]);
        if (row >= 0 && row < actions().GetCount()) {
            EXPECT_EQ(actions().GetCurSel(), row);
            EXPECT_TRUE(isInView(row));
        }
    }
    EXPECT_FALSE(isEnabled(u"ButtonUndo"));
    EXPECT_EQ(tip(u"ButtonUndo"), u"Undo (Ctrl+Z)");
    for (std::size_t at = 0; at < std::size(steps); ++at) {
        at % 2 == 0 ? redo() : m_driver->press(Key::z, kControlShift);
    }
    EXPECT_EQ(shown(), states.back());
    EXPECT_FALSE(isEnabled(u"ButtonRedo"));
    EXPECT_EQ(state(), u"Saved 22:13");
}

TEST_F(Undo, LeavesTheOtherRowsAlone) {
    m_driver->click(immediate(1));
    m_driver->pick(combo(2, u"ComboConditions"), 3);
    toolkit::CControlUI* const before[] = {actions().GetItemAt(0), actions().GetItemAt(2)};
    undo();
    EXPECT_EQ(combo(2, u"ComboConditions").GetText(), u"Zone");
    EXPECT_EQ(combo(2, u"ComboParameter").GetText(), u"Door");
    EXPECT_TRUE(combo(2, u"ComboConditions").IsFocused());
    session().removeAction(0, 1);
    EXPECT_EQ(actions().GetItemAt(0), before[0]);
    EXPECT_EQ(actions().GetItemAt(1), before[1]);
    m_driver->click(immediate(1));
    EXPECT_TRUE(session().action(0, 1).Immediate()) << "the rows know their new numbers";
    EXPECT_EQ(session().history().undoLabel()->action, 1);
    m_driver->manager().UpdateLayout();
    const platform::Rect odd = platform::Rect::at(1, 2, 3, 4);
    m_driver->get(u"LabelScene").SetPos(odd);
    session().setImmediate(0, 3, true);
    m_driver->manager().UpdateLayout();
    EXPECT_EQ(m_driver->get(u"LabelScene").GetPos(), odd) << "nothing was laid out again";
}

TEST_F(Undo, BelongsToATextFieldUntilItsTextIsTaken) {
    m_driver->click(immediate(0));
    m_driver->retype(u"EditBranchName", u"Smoke");
    undo();
    EXPECT_NE(m_driver->textOf(u"EditBranchName"), u"Smoke");
    EXPECT_TRUE(immediate(0).IsSelected());
    m_driver->retype(u"EditBranchName", u"Smoke");
    save(); // takes the name
    undo();
    EXPECT_EQ(m_driver->textOf(u"EditBranchName"), u"Alarm");
    EXPECT_TRUE(immediate(0).IsSelected());
    redo();
    m_driver->retype(u"EditBranchName", u"Fire");
    m_driver->click(u"ButtonUndo"); // which takes it as well
    EXPECT_EQ(session().branchName(0), "Smoke");
    m_driver->retype(u"EditBranchName", u"Lift"); // which another branch has
    m_driver->click(u"ButtonUndo");
    EXPECT_EQ(m_driver->textOf(u"EditBranchName"), u"Smoke") << "no more than what was typed";
    auto gesture = session().begin({scene::SceneStep::target, 0});
    session().setTarget(0, 0, "Alarm");
    m_driver->press(Key::tab);
    undo();
    EXPECT_EQ(session().action(0, 0).BranchID(), "Alarm") << "never in the middle of a gesture";
}

TEST_F(Undo, TheStateSaysWhetherTheSceneIsSaved) {
    constexpr std::int64_t kDay = 86'400;
    const auto expect = [this](const char16_t* text, std::uint32_t color) {
        EXPECT_EQ(state(), text);
        const platform::Bitmap picture = m_driver->picture();
        const platform::Rect label = m_driver->get(u"LabelState").GetPos();
        int painted = 0;
        for (int y = label.top; y < label.bottom; ++y) {
            for (int x = label.left; x < label.right; ++x) {
                painted += picture.at(x, y) == color ? 1 : 0;
            }
        }
        EXPECT_GT(painted, 0) << core::storedText(text);
    };
    makeScene({"Alarm"});
    scene().newScene("Fire");
    session().newScene("Fire");
    session().addBranch();
    show();
    expect(u"Not saved yet", 0xFF596675);
    save();
    expect(u"Saved 22:13", 0xFF596675);
    m_driver->click(u"ButtonAddAction");
    expect(u"Modified", 0xFF7A4A00);
    m_clock.time += 3600;
    undo();
    expect(u"Saved 22:13", 0xFF596675);
    redo();
    {
        support::FaultyFileSystem files(*core::services().fileSystem);
        files.failOn("open", 13);
        const core::ServicesOverride override{{&files, &m_clock, core::services().process}};
        save();
        expect(u"Not saved", 0xFFA8221B);
        undo();
        expect(u"Not saved", 0xFFA8221B);
    }
    save();
    EXPECT_EQ(state(), u"Saved 23:13");
    ui::SavedFacts facts{.savedAt = m_clock.time};
    for (const auto& [days, text] : {std::pair{1, u"Saved 14 Nov"}, {60, u"Saved 14 Nov 2023"}}) {
        m_clock.time = *facts.savedAt + days * kDay;
        EXPECT_EQ(ui::savedStateText(facts), text);
    }
    facts.savedAt = ui::fileTime("Scenes/Fire/Scene.xml");
    m_clock.time = *facts.savedAt;
    show(); // as after a visit to the zone editor
    EXPECT_EQ(state(), u"Saved " + ui::timeText(m_clock.time));
    EXPECT_TRUE(isEnabled(u"ButtonUndo") || isEnabled(u"ButtonRedo")) << "the history goes on";
}

TEST_F(Undo, ARenameOffersToUpdateWhatNamesTheBranch) {
    const auto offer = [this] {
        return isVisible(u"PanelNotice") ? m_driver->textOf(u"LabelStrip") : std::u16string();
    };
    const auto rename = [this](const std::u16string& name) {
        m_driver->pick(u"ComboBranchName", 1);
        m_driver->enter(u"EditBranchName", name);
    };
    rename(u"Stairs");
    EXPECT_EQ(offer(), u"30 actions still name \"Lift\".");
    EXPECT_FALSE(isVisible(u"LabelStatus") || isVisible(u"ButtonNoticeUndo"));
    rename(u"Ladder");
    EXPECT_EQ(offer(), u"30 actions still name \"Lift\".") << "none names the name between";
    rename(u"Alarm"); // refused by a note in front of the offer
    EXPECT_EQ(offer(), u"");
    m_driver->press(Key::escape);
    m_driver->click(u"ButtonAddAction");
    EXPECT_EQ(offer(), u"30 actions still name \"Lift\".") << "Esc was not for what is hidden";
    undo();
    undo(); // also the name between
    m_driver->pick(u"ComboBranchName", 0);
    m_driver->pick(combo(0, u"ComboBranches"), 0);
    EXPECT_EQ(offer(), u"29 actions still name \"Lift\".") << "stays, and stays true";
    m_driver->click(u"ButtonRetarget");
    EXPECT_EQ(session().actionsLeadingTo("Stairs").size(), 29U);
    EXPECT_EQ(combo(29, u"ComboBranches").GetText(), u"Stairs");
    EXPECT_EQ(offer(), u"");
    EXPECT_TRUE(isVisible(u"LabelStatus"));
    undo();
    EXPECT_EQ(session().actionsLeadingTo("Lift").size(), 29U) << "one step";
    EXPECT_EQ(offer(), u"");
    rename(u"Hall");
    EXPECT_EQ(offer(), u"") << "no action names that";
    undo();
    undo();
    undo();
    rename(u"Hall");
    EXPECT_NE(offer(), u"");
    undo();
    EXPECT_EQ(offer(), u"") << "true no more";
    session().setTarget(0, 0, "Alarm");
    session().setTarget(0, 1, "Alarm");
    for (const bool byKey : {false, true}) {
        rename(byKey ? u"Hall" : u"Door");
        session().setTarget(0, 0, session().branchName(1));
        rename(u"Yard");
        EXPECT_EQ(offer(),
                  byKey ? u"1 action still names \"Hall\"." : u"1 action still names \"Door\".");
        byKey ? m_driver->press(Key::escape) : m_driver->click(u"ButtonCloseNotice");
        EXPECT_EQ(offer(), u"");
    }
    session().setTarget(0, 0, "Yard");
    session().addAction(0); // which has no target yet
    for (const char16_t* name : {u"", u"Roof"}) {
        rename(name);
        EXPECT_EQ(offer(), u"") << "no name is nothing to lead to";
    }
}

} // namespace
