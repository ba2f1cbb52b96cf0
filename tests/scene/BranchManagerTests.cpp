#include <functional>

#include <gtest/gtest.h>

#include "scene/BranchManager.h"
#include "tests/scene/SceneFixture.h"

namespace {

using scene::Action;
using scene_tests::Lines;
using Actions = std::vector<std::shared_ptr<Action>>;

class BranchManagerTest : public scene_tests::SceneFixture {
protected:
    std::shared_ptr<scene::BranchManager> m_branches = scene::BranchManager::create();
};

TEST_F(BranchManagerTest, NewBranchesAreNumberedFromTwoWhateverElseThereIs) {
    const auto loaded = scene::Branch::create();
    loaded->SetID("New Branch 2");
    m_branches->append(loaded);
    m_branches->append(nullptr);
    EXPECT_TRUE(m_branches->AddBranch() && m_branches->AddBranch());
    Lines ids{"kept"};
    m_branches->branchIDs(ids);
    EXPECT_EQ(ids, (Lines{"kept", "New Branch 2", "New Branch 2", "New Branch 3"}));
    EXPECT_EQ(m_branches->branchCount(), 3);
    m_branches->setBranchID(2, "renamed");
    m_branches->AddBranch();
    EXPECT_EQ(m_branches->branchID(3), "New Branch 4");
}

/// One operation under the line number of its message; what it gives is checked on the spot.
struct Operation {
    int line;
    std::function<void(scene::BranchManager&, int index)> call;
    std::function<void(scene::BranchManager&, int actionIndex)> callAction = nullptr;
};

Actions actionsOf(const scene::BranchManager& manager, int index) {
    Actions actions{Action::create()};
    manager.branchActions(index, actions);
    return actions;
}

const Operation kOperations[] = {
    {337, [](auto& m, int i) { EXPECT_EQ(m.branchID(i), ""); }},
    {344, [](auto& m, int i) { m.setBranchID(i, "x"); }},
    {351, [](auto& m, int i) { EXPECT_EQ(m.branchFilename(i), ""); }},
    {358, [](auto& m, int i) { m.setBranchFilename(i, "x"); }},
    {365, [](auto& m, int i) { EXPECT_EQ(actionsOf(m, i), Actions()); }},
    {372, [](auto& m, int i) { m.addAction(i, Action::create()); }},
    {379, [](auto& m, int i) { m.removeAction(i, 0); },
     [](auto& m, int a) { m.removeAction(0, a); }},
    {386, [](auto& m, int i) { EXPECT_EQ(m.action(i, 0), nullptr); },
     [](auto& m, int a) { EXPECT_EQ(m.action(0, a), nullptr); }},
};

TEST_F(BranchManagerTest, AnIndexOutOfRangeIsReportedOnceAndChangesNothing) {
    m_branches->AddBranch();
    m_branches->AddBranch();
    m_branches->setBranchFilename(0, "clip.ogv");
    m_branches->addAction(0, Action::create());
    const std::string before = written(*m_branches);
    for (const Operation& operation : kOperations) {
        const Lines report{"..\\BranchManager.cpp:" + std::to_string(operation.line) +
                           " Invalid branch index"};
        for (const int index : {-1, 2, 2147483647, -2147483647 - 1}) {
            operation.call(*m_branches, index);
            EXPECT_EQ(newErrors(), report) << index;
        }
        for (const int index : {-1, 1}) {
            if (!operation.callAction) {
                continue;
            }
            operation.callAction(*m_branches, index);
            EXPECT_EQ(newErrors(), report) << "action " << index;
        }
        EXPECT_EQ(written(*m_branches), before) << operation.line;
    }
}

} // namespace
