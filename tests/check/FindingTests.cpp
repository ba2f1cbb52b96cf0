// What a scene's findings name, and their texts.
#include <functional>

#include <gtest/gtest.h>

#include "check/Finding.h"
#include "check/Names.h"
#include "scene/SceneManager.h"

namespace {

TEST(SceneNames, TheFirstNameThatKeepsASceneFromLoadingIsFound) {
    const struct {
        std::function<void(scene::SceneManager&)> spoil;
        int branch;
        int action;
    } cases[] = {
        {[](auto& scene) { scene.action(1, 1)->SetBranchID("a<b"); }, 1, 1},
        {[](auto& scene) { scene.action(1, 0)->SetParameter("a<b"); }, 1, 0},
        {[](auto& scene) { scene.setBranchFilename(1, "a<b"); }, 1, -1},
        {[](auto& scene) { scene.renameBranch(0, "a<b"); }, 0, -1},
        {[](auto& scene) { scene.SetFirstBranch("a<b"); }, -1, -1},
        {[](auto& scene) { scene.SetName("a<b"); }, -1, -1},
    };
    const auto scene = scene::SceneManager::create();
    scene->newScene("Plain & simple");
    scene->AddBranch();
    scene->AddBranch();
    scene->SetFirstBranch("");
    scene->addAction(1, scene::Action::create());
    scene->addAction(1, scene::Action::create());
    EXPECT_FALSE(check::firstUnreadableName(*scene));
    for (const auto& test : cases) { // each stands before those spoilt already
        test.spoil(*scene);
        const auto found = check::firstUnreadableName(*scene);
        ASSERT_TRUE(found);
        EXPECT_EQ(found->branch, test.branch);
        EXPECT_EQ(found->action, test.action);
        EXPECT_EQ(check::kindName(found->kind), "unreadable-name");
        EXPECT_EQ(check::findingText(*found),
                  "The name \"a<b\" holds a \"<\": the scene will not load again.");
    }
}

} // namespace
