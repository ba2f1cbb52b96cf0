// The one line that tells the author about the state of a scene.
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "scene/SceneManager.h"
#include "ui/SceneHints.h"

namespace {

std::shared_ptr<scene::SceneManager> sceneWithTwoBranches() {
    auto scene = scene::SceneManager::create();
    scene->newScene("Plain & simple");
    scene->AddBranch();
    scene->AddBranch();
    scene->addAction(1, scene::Action::create());
    return scene;
}

TEST(SceneHints, NamesThatKeepASceneFromLoadingAreFound) {
    EXPECT_EQ(ui::unreadableHint(*sceneWithTwoBranches()), u"");
    const struct {
        const char* where;
        std::function<void(scene::SceneManager&)> spoil;
        const char16_t* place;
    } cases[] = {
        {"scene", [](auto& scene) { scene.SetName("a<b"); }, u""},
        {"first branch", [](auto& scene) { scene.SetFirstBranch("a<b"); }, u""},
        {"branch", [](auto& scene) { scene.renameBranch(1, "a<b"); }, u""},
        {"video", [](auto& scene) { scene.setBranchFilename(1, "a<b"); }, u""},
        {"parameter", [](auto& scene) { scene.action(1, 0)->SetParameter("a<b"); },
         u" in an action of \"New Branch 3\""},
        {"target", [](auto& scene) { scene.action(1, 0)->SetBranchID("a<b"); },
         u" in an action of \"New Branch 3\""},
    };
    for (const auto& test : cases) {
        const auto scene = sceneWithTwoBranches();
        test.spoil(*scene);
        EXPECT_EQ(ui::unreadableHint(*scene),
                  std::u16string(u"The name \"a<b\"") + test.place +
                      u" holds a \"<\": a scene saved with it will not load again.")
            << test.where;
    }
}

TEST(SceneHints, TextsOfTheStrip) {
    const std::pair<const char*, const char16_t*> failures[] = {
        {"", u""},
        {"Permission denied", u"Not saved: Permission denied"},
        {"/home/a/Scenes/A: B\\Scene.xml: No space left on device",
         u"Not saved: Scene.xml: No space left on device"},
        {"clip-ZoneInfo.bin: Input/output error",
         u"Not saved: clip-ZoneInfo.bin: Input/output error"},
    };
    for (const auto& [reason, shown] : failures) {
        EXPECT_EQ(ui::notSavedText(reason), shown);
    }
}

TEST(SceneHints, TextsOfACopyUnderWay) {
    ui::CopyStatus status{"clip.ogv", 1, 1, 0, 0};
    EXPECT_EQ(ui::copyText(status), u"Copying clip.ogv. Esc cancels.");
    status.totalBytes = 3;
    EXPECT_EQ(ui::copyText(status), u"Copying clip.ogv: 0 %. Esc cancels.");
    status.copiedBytes = 2;
    EXPECT_EQ(ui::copyText(status), u"Copying clip.ogv: 66 %. Esc cancels.");
    status.copiedBytes = 4; // the file grew meanwhile
    EXPECT_EQ(ui::copyText(status), u"Copying clip.ogv: 100 %. Esc cancels.");
    status = {"b.ogv", 2, 3, 5'000'000'000ULL, 10'000'000'000ULL};
    EXPECT_EQ(ui::copyText(status), u"Copying b.ogv (2 of 3): 50 %. Esc cancels.");
}

} // namespace
