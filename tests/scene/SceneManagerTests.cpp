#include <functional>

#include <gtest/gtest.h>

#include "scene/SceneManager.h"
#include "tests/scene/SceneFixture.h"

namespace {

using scene::Action;
using scene_tests::Lines;
using Actions = std::vector<std::shared_ptr<Action>>;

class SceneManagerTest : public scene_tests::SceneFixture {
protected:
    std::shared_ptr<scene::SceneManager> m_scene = scene::SceneManager::create();
};

TEST_F(SceneManagerTest, TheFirstBranchAddedPlaysFirstAndFollowsItsName) {
    EXPECT_TRUE(m_scene->AddBranch());
    EXPECT_EQ(m_scene->FirstBranch(), "New Branch 2");
    EXPECT_TRUE(m_scene->AddBranch());
    EXPECT_EQ(m_scene->FirstBranch(), "New Branch 2");
    m_scene->addAction(1, Action::create());
    m_scene->action(1, 0)->SetBranchID("New Branch 2");
    m_scene->renameBranch(1, "Other");
    EXPECT_EQ(m_scene->FirstBranch(), "New Branch 2");
    m_scene->renameBranch(0, "Start");
    EXPECT_EQ(m_scene->FirstBranch(), "Start");
    EXPECT_EQ(m_scene->action(1, 0)->BranchID(), "New Branch 2") << "actions keep the old name";
    Lines ids;
    m_scene->branchIDs(ids);
    EXPECT_EQ(ids, (Lines{"Start", "Other"}));
    EXPECT_EQ(newErrors(), Lines{});
}

TEST_F(SceneManagerTest, ABadIndexIsTheBranchManagersMatterAlone) {
    m_scene->AddBranch();
    m_scene->SetFirstBranch("");
    m_scene->renameBranch(1, "x");
    EXPECT_EQ(newErrors(), (Lines{"..\\BranchManager.cpp:337 Invalid branch index",
                                  "..\\BranchManager.cpp:344 Invalid branch index"}));
    EXPECT_EQ(m_scene->FirstBranch(), "") << "no branch was renamed";
    EXPECT_EQ(m_scene->branchFilename(-1), "");
    EXPECT_EQ(newErrors(), Lines{"..\\BranchManager.cpp:351 Invalid branch index"});
}

/// One operation under the line number of its message; true when its result is empty.
struct Operation {
    int line;
    std::function<bool(scene::SceneManager&)> call;
};

TEST_F(SceneManagerTest, WithoutABranchManagerEveryOperationReportsAndDoesNothing) {
    const Operation operations[] = {
        {216, [](auto& m) { return !m.AddBranch(); }},
        {228,
         [](auto& m) {
             Lines l;
             m.branchIDs(l);
             return l.empty();
         }},
        {235, [](auto& m) { return m.branchCount() == 0; }},
        {242, [](auto& m) { return m.branchID(0).empty(); }},
        {249,
         [](auto& m) {
             m.renameBranch(0, "x");
             return m.FirstBranch().empty();
         }},
        {263, [](auto& m) { return m.branchFilename(0).empty(); }},
        {270,
         [](auto& m) {
             m.setBranchFilename(0, "x");
             return true;
         }},
        {277,
         [](auto& m) {
             Actions a{nullptr};
             m.branchActions(0, a);
             return a.empty();
         }},
        {284,
         [](auto& m) {
             m.addAction(0, Action::create());
             return true;
         }},
        {291,
         [](auto& m) {
             m.removeAction(0, 0);
             return true;
         }},
        {298, [](auto& m) { return !m.action(0, 0); }},
        {305, [](auto& m) { return !m.Save("Scenes/A/"); }},
    };
    scene::SceneManager empty(nullptr);
    support::writeBytes("Scenes/A/Scene.xml", "old");
    for (const Operation& operation : operations) {
        EXPECT_TRUE(operation.call(empty)) << operation.line;
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
