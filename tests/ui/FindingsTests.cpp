// The left pane: finding branches by their names, and the list of what is wrong with the scene,
// which follows every edit, leads to each place and offers to fix what it can.
#include <algorithm>
#include <string>
#include <utility>

#include "platform/Bitmap.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "tests/support/ClipMaker.h"
#include "tests/ui/BranchListFixture.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/WindowLook.h"

namespace {

using platform::Key;

class FindingsTest : public test::BranchEditorTest {
protected:
    /// "A" leads to "B" and to "Gone"; "B" has no way out; nobody leads to "C".
    void showScene(int width) {
        support::writeBytes("Scenes/Fire/a.ogv", support::makeClip({.frames = 2}));
        makeScene({"A", "B", "C"}, {"a.ogv", "a.ogv", "a.ogv"});
        addAction(0, {}, "B");
        addAction(1, "K", "Gone");
        addAction(0, {}, "A", 2);
        show();
        m_driver->native().setGeometry(platform::Rect::at(0, 0, width, 760));
        test::pump();
    }
    toolkit::CListUI& findings() { return m_driver->get<toolkit::CListUI>(u"ListFindings"); }
    std::u16string row(int index) { return findings().GetItemAt(index)->accessibleName(); }
    void clickRow(int index) { m_driver->click(*findings().GetItemAt(index)); }

    const std::u16string kGone =
        u"Error: An action of \"A\" leads to \"Gone\", which is not in the "
        u"scene, A, action 2";
    const std::u16string kEnd = u"Note: \"B\" has no way out, B";
    const std::u16string kUnreached = u"Warning: No action leads to \"C\", C";
};

TEST_F(FindingsTest, TheListFollowsEveryEditAndTheFilters) {
    showScene(1600);
    ASSERT_EQ(findings().GetCount(), 3);
    EXPECT_EQ(row(0), kGone);
    EXPECT_EQ(row(1), kUnreached);
    EXPECT_EQ(row(2), kEnd);
    EXPECT_EQ(m_driver->textOf(u"LabelFindings"), u"3");
    EXPECT_EQ(m_driver->get(u"ButtonCheck").accessibleName(), u"Check, 3 findings");
    m_driver->click(u"CheckErrors");
    ASSERT_EQ(findings().GetCount(), 2);
    EXPECT_EQ(row(0), kUnreached);
    EXPECT_EQ(m_driver->textOf(u"CheckErrors"), u"1");
    EXPECT_EQ(m_driver->textOf(u"LabelFindings"), u"3");
    m_driver->click(u"CheckErrors");
    session().setTarget(0, 1, "C");
    ASSERT_EQ(findings().GetCount(), 1);
    EXPECT_EQ(row(0), kEnd);
    m_driver->press(Key::f8); // selects it, and the selection stays with it
    session().setVideo(0, "");
    ASSERT_EQ(findings().GetCount(), 2);
    EXPECT_EQ(row(findings().GetCurSel()), kEnd);
    session().setVideo(0, "gone.ogv");
    EXPECT_TRUE(test::pumpUntil([&] { return m_driver->textOf(u"CheckErrors") == u"1"; }));
    EXPECT_EQ(row(0), u"Error: The video \"gone.ogv\" is missing, A, video");
    session().renameBranch(0, "First");
    EXPECT_EQ(row(0), u"Error: The video \"gone.ogv\" is missing, First, video");
    m_driver->click(u"CheckFindings");
    EXPECT_FALSE(isVisible(u"ListFindings"));
    m_driver->click(u"CheckFindings");
    EXPECT_TRUE(isVisible(u"ListFindings"));
}

TEST_F(FindingsTest, AFindingLeadsToItsPlaceAndOffersWhatMendsIt) {
    showScene(1600);
    m_driver->pick(u"ComboBranchName", 1);
    const auto revision = session().revision();
    clickRow(0);
    EXPECT_EQ(m_driver->textOf(u"ComboBranchName"), u"A");
    EXPECT_EQ(actions().GetCurSel(), 1);
    EXPECT_EQ(m_driver->textOf(u"LabelStrip"),
              u"Action 2 leads to \"Gone\", which is not in the scene.");
    EXPECT_EQ(m_driver->textOf(u"ButtonFix"), u"Add \"Gone\"");
    EXPECT_EQ(session().revision(), revision);
    m_driver->click(u"ButtonFix");
    EXPECT_EQ(session().branchNames().back(), "Gone");
    EXPECT_EQ(m_driver->get(u"ButtonUndo").GetToolTip(), u"Undo: add branch (Ctrl+Z)");
    EXPECT_FALSE(isVisible(u"PanelNotice"));
    m_driver->click(u"ButtonUndo");
    EXPECT_EQ(session().branchCount(), 3);
    m_driver->pick(u"ComboBranchName", 2);
    m_driver->press(Key::f8, {.shift = true});
    EXPECT_EQ(m_driver->textOf(u"ComboBranchName"), u"B") << "round at the end";
    m_driver->press(Key::f8);
    EXPECT_EQ(m_driver->textOf(u"ComboBranchName"), u"A");
    m_driver->pick(u"ComboBranchName", 2);
    m_driver->click(u"ButtonFixOther"); // an offer about the branch before
    EXPECT_EQ(m_driver->textOf(u"ComboBranchName"), u"A");
    EXPECT_TRUE(combo(1, u"ComboBranches").IsDropped());
    m_driver->press(Key::escape);
    session().setTarget(0, 1, "B");
    EXPECT_FALSE(isVisible(u"PanelNotice")) << "no longer true";
    EXPECT_FALSE(isVisible(u"LabelProblem"));
}

TEST_F(FindingsTest, TheMenuOfAFindingHasWhatMendsItAndLeadsOn) {
    showScene(1600);
    const platform::Point second = test::WindowDriver::middleOf(*findings().GetItemAt(1));
    for (const auto kind : {platform::EventKind::mouseDown, platform::EventKind::mouseUp}) {
        test::input().mouse(m_driver->native(), kind, second, platform::MouseButton::right);
    }
    test::pump();
    EXPECT_EQ(test::menuOf(*m_driver),
              (test::Texts{u"Next Finding", u"Finding Before", u"-", u"Add the Branch",
                           u"Choose Another…", u"Convert It", u"-", u"This Branch's Zones"}));
    EXPECT_EQ(findings().GetCurSel(), 1) << "the one that was pressed";
    m_driver->press(Key::escape);
    m_driver->click(*findings().GetItemAt(0)); // the missing branch
    m_driver->click(*findings().GetItemAt(1)); // has nothing to do with it
    m_driver->manager().SetFocus(&findings());
    m_driver->press(Key::f10, {.shift = true});
    m_driver->type(u"a");
    m_driver->press(Key::enter);
    EXPECT_EQ(session().branchCount(), 3);
    m_driver->press(Key::escape);
    m_driver->click(*findings().GetItemAt(0));
    m_driver->manager().SetFocus(&findings());
    m_driver->press(Key::f10, {.shift = true});
    m_driver->type(u"a");
    m_driver->press(Key::enter);
    EXPECT_EQ(session().branchNames().back(), "Gone");
    m_driver->manager().SetFocus(&findings());
    m_driver->press(Key::menu);
    m_driver->type(u"a"); // it is mended: nothing offers that now
    m_driver->press(Key::enter);
    m_driver->press(Key::escape);
    EXPECT_EQ(session().branchCount(), 4);
    m_driver->press(Key::menu);
    m_driver->type(u"n");
    m_driver->press(Key::enter);
    EXPECT_GE(findings().GetCurSel(), 0);
}

// The count in the caption and the tick in the empty list.
TEST_F(FindingsTest, NothingToReportHasATickAndTheCountARoundGround) {
    const auto good = [this] { return m_driver->manager().look().palette()[toolkit::Tone::good]; };
    support::writeBytes("Scenes/Fire/a.ogv", support::makeClip({.frames = 2}));
    makeScene({"A"}, {"a.ogv"});
    addAction(0, {}, "A");
    show();
    m_driver->native().setGeometry(platform::Rect::at(0, 0, 1600, 900));
    ASSERT_TRUE(test::pumpUntil([&] { return isVisible(u"EmptyFindings"); }));
    const platform::Bitmap picture = m_driver->picture();
    const platform::Rect empty = m_driver->get(u"EmptyFindings").GetPos();
    int left = empty.right;
    for (int y = empty.top; y < empty.bottom; ++y) {
        for (int x = empty.left; x < empty.right; ++x) {
            left = picture.at(x, y) == good() ? std::min(left, x) : left;
        }
    }
    EXPECT_LT(left, (empty.left + empty.right) / 2) << "left of the text";
    const platform::Rect ground = m_driver->get(u"SignFindings").GetPos();
    const int middle = (ground.top + ground.bottom) / 2;
    EXPECT_EQ(picture.at(ground.left, middle), good());
    for (const platform::Point corner :
         {platform::Point{ground.left, ground.top}, {ground.right - 1, ground.bottom - 1}}) {
        EXPECT_NE(picture.at(corner.x, corner.y), good());
    }
}

TEST_F(FindingsTest, ANarrowWindowShowsTheListInPlaceOfTheColumn) {
    showScene(1000);
    const auto shown = [&] {
        return std::pair(isVisible(u"ListFindings"), isVisible(u"BranchList"));
    };
    EXPECT_EQ(shown(), std::pair(false, true));
    for (const Key key : {Key::escape, Key::enter}) {
        m_driver->click(u"ButtonCheck");
        EXPECT_EQ(shown(), std::pair(true, false));
        EXPECT_EQ(m_driver->focusName(), u"ListFindings");
        m_driver->press(Key::down);
        EXPECT_EQ(shown(), std::pair(true, false)) << "keys only select";
        m_driver->press(key);
        EXPECT_EQ(shown(), std::pair(false, true));
    }
    m_driver->click(u"ButtonCheck");
    clickRow(1);
    EXPECT_EQ(shown(), std::pair(false, true));
    EXPECT_EQ(m_driver->textOf(u"ComboBranchName"), u"C");
    m_driver->click(u"ButtonCheck");
    m_driver->click(u"ButtonCheck");
    EXPECT_EQ(shown(), std::pair(false, true));
}

TEST_F(FindingsTest, ABranchIsFoundByAnyPartOfItsName) {
    const auto shown = [this] { return m_driver->textOf(u"EditBranchName"); };
    makeScene({"Hall", "Stairs up", "Übung", "Stairs down"});
    show();
    for (const int width : {1600, 1000}) {
        SCOPED_TRACE(width);
        m_driver->native().setGeometry(platform::Rect::at(0, 0, width, 700));
        test::pump();
        if (width == 1600) {
            m_driver->click(u"OptionPreview"); // which has no such field
        }
        m_driver->press(Key::f, {.control = true});
        EXPECT_EQ(m_driver->focusName(), u"EditFindBranch");
        m_driver->type(u"AIR");
        EXPECT_EQ(shown(), u"Hall") << "typing goes nowhere";
        const std::pair<Key, std::u16string> steps[] = {{Key::enter, u"Stairs up"},
                                                        {Key::enter, u"Stairs down"},
                                                        {Key::enter, u"Stairs up"},
                                                        {Key::up, u"Stairs down"}};
        for (const auto& [key, found] : steps) {
            m_driver->press(key);
            EXPECT_EQ(shown(), found);
        }
        m_driver->retype(u"EditFindBranch", u"übU");
        m_driver->press(Key::enter);
        EXPECT_EQ(shown(), u"Übung");
        m_driver->type(u"x");
        m_driver->press(Key::enter);
        EXPECT_EQ(shown(), u"Übung");
        EXPECT_EQ(m_driver->textOf(u"LabelStatus"), u"No branch has this name.");
        m_driver->click(u"CheckNotes"); // what the author does next takes the note away
        EXPECT_NE(m_driver->textOf(u"LabelStatus"), u"No branch has this name.");
        m_driver->retype(u"EditFindBranch", u"übUx");
        EXPECT_EQ(m_driver->textOf(u"LabelStatus"), u"No branch has this name.");
        session().renameBranch(3, "übux");
        EXPECT_NE(m_driver->textOf(u"LabelStatus"), u"No branch has this name.");
        session().undo();
        m_driver->press(Key::escape);
        EXPECT_EQ(m_driver->textOf(u"EditFindBranch"), u"");
        EXPECT_TRUE(isVisible(u"EditFindBranch"));
        m_driver->press(Key::escape);
        EXPECT_TRUE(isVisible(u"BranchList")) << "the column is back";
        m_driver->pick(u"ComboBranchName", 0);
    }
}

} // namespace
