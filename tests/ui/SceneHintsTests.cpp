// The one line that tells the author about the state of a scene.
#include <functional>

#include <gtest/gtest.h>

#include "scene/SceneManager.h"
#include "ui/SceneHints.h"

namespace {

TEST(SceneHints, NamesThatKeepASceneFromLoadingAreFound) {
    const std::u16string inAction = u" in an action of \"New Branch 3\"";
    const struct {
        std::function<void(scene::SceneManager&)> spoil;
        std::u16string place;
    } cases[] = {
        {[](auto& scene) { scene.SetName("a<b"); }, u""},
        {[](auto& scene) { scene.SetFirstBranch("a<b"); }, u""},
        {[](auto& scene) { scene.renameBranch(1, "a<b"); }, u""},
        {[](auto& scene) { scene.setBranchFilename(1, "a<b"); }, u""},
        {[](auto& scene) { scene.action(1, 0)->SetParameter("a<b"); }, inAction},
        {[](auto& scene) { scene.action(1, 0)->SetBranchID("a<b"); }, inAction},
    };
    for (const auto& test : cases) {
        const auto scene = scene::SceneManager::create();
        scene->newScene("Plain & simple");
        scene->AddBranch();
        scene->AddBranch();
        scene->addAction(1, scene::Action::create());
        EXPECT_EQ(ui::unreadableHint(*scene), u"");
        test.spoil(*scene);
        EXPECT_EQ(ui::unreadableHint(*scene),
                  u"The name \"a<b\"" + test.place +
                      u" holds a \"<\": a scene saved with it will not load again.");
    }
}

TEST(SceneHints, ACopyUnderWayIsToldInPercent) {
    const std::pair<ui::CopyStatus, const char16_t*> states[] = {
        {{"a.ogv", 1, 1, 0, 0}, u"Copying a.ogv. Esc cancels."},
        {{"a.ogv", 1, 1, 0, 3}, u"Copying a.ogv: 0 %. Esc cancels."},
        {{"a.ogv", 1, 1, 2, 3}, u"Copying a.ogv: 66 %. Esc cancels."},
        {{"a.ogv", 1, 1, 4, 3}, u"Copying a.ogv: 100 %. Esc cancels."}, // it grew meanwhile
        {{"b.ogv", 2, 3, 5'000'000'000ULL, 10'000'000'000ULL},
         u"Copying b.ogv (2 of 3): 50 %. Esc cancels."},
    };
    for (const auto& [state, shown] : states) {
        EXPECT_EQ(ui::copyText(state), shown);
    }
}

} // namespace
