// The branch editor: branches, their names and the first branch, by mouse and keyboard.
#include "tests/support/windows/EditorTest.h"
#include "ui/BranchList.h"

namespace {

class BranchEditor : public test::EditorTest {};

TEST_F(BranchEditor, ShowsABranchAndItsActions) {
    scene().newScene("Fire drill");
    scene().AddBranch();
    scene().AddBranch();
    scene().setBranchFilename(0, "a.ogv");
    for (int type = 0; type < 4; ++type) {
        const auto action = scene::Action::create();
        action->SetType(type);
        action->SetBranchID("New Branch 3");
        action->SetParameter("L");
        scene().addAction(0, action);
    }
    const auto window = open<ui::BranchList>(u"Quorvel");
    test::WindowDriver driver(*window);
    EXPECT_EQ(driver.get(u"LabelScene").GetText(), u"Fire drill");
    EXPECT_EQ(driver.get<toolkit::CListUI>(u"BranchList").GetCount(), 4);
    driver.click(u"ButtonAddBranch");
    EXPECT_EQ(driver.get(u"EditBranchName").GetText(), u"New Branch 4");
    EXPECT_EQ(scene().branchCount(), 3);
}

} // namespace
