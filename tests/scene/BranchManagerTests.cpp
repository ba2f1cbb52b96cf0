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

/// One operation under the line number of its message; true when its result is empty.
struct Operation {
    int line;
    std::function<bool(scene::BranchManager&, int index)> call;
    std::function<bool(scene::BranchManager&, int actionIndex)> callAction = nullptr;
};

const Operation kOperations[] = {
    {337, [](auto& m, int i) { return m.branchID(i).empty(); }},
    {344,
     [](auto& m, int i) {
         m.setBranchID(i, "x");
         return true;
     }},
    {351, [](auto& m, int i) { return m.branchFilename(i).empty(); }},
    {358,
     [](auto& m, int i) {
         m.setBranchFilename(i, "x");
         return true;
     }},
    {365,
     [](auto& m, int i) {
         Actions a{Action::create()};
         m.branchActions(i, a);
         return a.empty();
     }},
    {372,
     [](auto& m, int i) {
         m.addAction(i, Action::create());
         return true;
     }},
    {379,
     [](auto& m, int i) {
         m.removeAction(i, 0);
         return true;
     },
     [](auto& m, int a) {
         m.removeAction(0, a);
         return true;
     }},
    {386, [](auto& m, int i) { return !m.action(i, 0); },
     [](auto& m, int a) { return !m.action(0, a); }},
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
            EXPECT_TRUE(operation.call(*m_branches, index)) << operation.line;
            EXPECT_EQ(newErrors(), report) << index;
        }
        for (const int index : {-1, 1}) {
            if (!operation.callAction) {
                continue;
            }
            EXPECT_TRUE(operation.callAction(*m_branches, index)) << operation.line;
            EXPECT_EQ(newErrors(), report) << "action " << index;
        }
        EXPECT_EQ(written(*m_branches), before) << operation.line;
    }
}

} // namespace
