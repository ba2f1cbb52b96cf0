#include <functional>

#include <gtest/gtest.h>

#include "scene/SceneManager.h"
#include "tests/scene/SceneFixture.h"

namespace {

using scene::Action;
using scene_tests::Lines;
using Actions = std::vector<std::shared_ptr<Action>>;

Lines idsOf(const scene::SceneManager& scene) {
    Lines ids;
    scene.branchIDs(ids);
    return ids;
}

Actions actionsOf(const scene::SceneManager& scene, int branch) {
    Actions actions{nullptr};
    scene.branchActions(branch, actions);
    return actions;
}

class SceneManagerTest : public scene_tests::SceneFixture {
protected:
    std::shared_ptr<scene::SceneManager> m_scene = scene::SceneManager::create();
};

TEST_F(SceneManagerTest, NewBranchesAreNumberedFromTwoWhateverElseThereIs) {
    const auto branches = scene::BranchManager::create();
    const auto loaded = scene::Branch::create();
    loaded->SetID("New Branch 2");
    branches->append(loaded);
    branches->append(nullptr);
    EXPECT_TRUE(branches->AddBranch() && branches->AddBranch());
    Lines ids{"kept"};
    branches->branchIDs(ids);
    EXPECT_EQ(ids, (Lines{"kept", "New Branch 2", "New Branch 2", "New Branch 3"}));
    EXPECT_EQ(branches->branchCount(), 3);
    branches->setBranchID(2, "renamed");
    branches->AddBranch();
    EXPECT_EQ(branches->branchID(3), "New Branch 4");
}

/// One operation under the line number of its message; what it gives is checked on the spot.
struct Operation {
    int line;
    std::function<void(scene::SceneManager&)> call;
};

TEST_F(SceneManagerTest, WithoutABranchManagerEveryOperationReportsAndDoesNothing) {
    const Operation operations[] = {
        {216, [](auto& m) { EXPECT_FALSE(m.AddBranch()); }},
        {228, [](auto& m) { EXPECT_EQ(idsOf(m), Lines()); }},
        {235, [](auto& m) { EXPECT_EQ(m.branchCount(), 0); }},
        {242, [](auto& m) { EXPECT_EQ(m.branchID(0), ""); }},
        {249, [](auto& m) { m.renameBranch(0, "x"); }},
        {263, [](auto& m) { EXPECT_EQ(m.branchFilename(0), ""); }},
        {270, [](auto& m) { m.setBranchFilename(0, "x"); }},
        {277, [](auto& m) { EXPECT_EQ(actionsOf(m, 0), Actions()); }},
        {284, [](auto& m) { m.addAction(0, Action::create()); }},
        {291, [](auto& m) { m.removeAction(0, 0); }},
        {298, [](auto& m) { EXPECT_EQ(m.action(0, 0), nullptr); }},
        {305, [](auto& m) { EXPECT_FALSE(m.Save("Scenes/A/")); }},
    };
    scene::SceneManager empty(nullptr);
    support::writeBytes("Scenes/A/Scene.xml", "old");
    for (const Operation& operation : operations) {
        operation.call(empty);
        EXPECT_EQ(newErrors(), Lines{"..\\SceneManager.cpp:" + std::to_string(operation.line) +
                                     " Branch Manager is invalid"});
    }
    EXPECT_EQ(support::readBytes("Scenes/A/Scene.xml"), "old");
}

TEST_F(SceneManagerTest, ANewSceneStartsEmpty) {
    m_scene->SetName("old");
    m_scene->AddBranch();
    EXPECT_TRUE(m_scene->newScene("new"));
    EXPECT_EQ(m_scene->Name() + "|" + m_scene->FirstBranch(), "new|");
    EXPECT_EQ(m_scene->branchCount(), 0);
    m_scene->AddBranch();
    EXPECT_EQ(m_scene->FirstBranch(), "New Branch 2") << "the counter starts again";
}

} // namespace
