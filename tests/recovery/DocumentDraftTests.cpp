// Scenes and zones that come back as they were left.
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "recovery/KeptDrafts.h"
#include "recovery/SceneDraft.h"
#include "recovery/ZoneDraft.h"
#include "scene/SceneFolders.h"
#include "scene/SceneManager.h"
#include "scene/SceneSession.h"
#include "tests/recovery/DraftTest.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace {

using recovery::keptSceneDrafts;
using Names = std::vector<std::string>;

class SceneDraftTest : public recovery_tests::DraftTest {
protected:
    SceneDraftTest() { restart(); }
    /// As by Exit and a new start.
    void restart() {
        m_draft = nullptr;
        m_session = std::make_unique<scene::SceneSession>(scene::SceneManager::create());
        m_draft = std::make_unique<recovery::SceneDraft>(*m_session, *m_drafts);
        m_drafts->settle();
    }
    bool save() { return m_session->save(scene::sceneFolderPath(m_session->scene().Name())); }
    void expectRestored(const Names& before, const Names& after) {
        ASSERT_EQ(keptSceneDrafts().size(), 1U);
        ASSERT_TRUE(m_draft->restore(keptSceneDrafts()[0].folder));
        EXPECT_EQ(m_session->branchNames(), after);
        EXPECT_TRUE(m_session->isModified());
        EXPECT_EQ(m_session->history().size(), 1U);
        m_session->undo();
        EXPECT_EQ(m_session->branchNames(), before);
        EXPECT_FALSE(m_session->isModified());
        m_session->redo();
    }

    std::unique_ptr<scene::SceneSession> m_session;
    std::unique_ptr<recovery::SceneDraft> m_draft;
};

TEST_F(SceneDraftTest, OfAnySceneIsOneStepOnTopOfWhatIsSaved) {
    const std::string name = "New & Scene";
    m_session->newScene(name);
    m_session->addBranch();
    m_session->renameBranch(0, "a < b & c");
    wait();
    until([] { return isOnDisk("a &#60; b"); });
    restart();
    EXPECT_EQ(keptSceneDrafts().at(0).info.scene, name);
    expectRestored({}, {"a < b & c"});
    EXPECT_TRUE(m_session->isNew());
    m_session->renameBranch(0, "named");
    EXPECT_TRUE(save());
    restart();
    EXPECT_FALSE(support::exists("Drafts")) << "neither the restored draft nor a new one";

    m_session->newScene("Saved");
    m_session->addBranch();
    EXPECT_TRUE(save());
    restart();
    EXPECT_TRUE(m_draft->load("Saved"));
    m_session->addBranch();
    m_session->renameBranch(1, "unsaved");
    restart();
    recovery::DraftInfo info = keptSceneDrafts().at(0).info;
    EXPECT_FALSE(recovery::isSceneSavedSince(info));
    info.base.erase(info.base.find('.')); // as older programs wrote it
    EXPECT_FALSE(recovery::isSceneSavedSince(info));
    expectRestored({"New Branch 2"}, {"New Branch 2", "unsaved"});
    EXPECT_FALSE(m_session->isNew());
    m_session->undo();

    restart();
    EXPECT_TRUE(m_draft->load("Saved"));
    const auto time = std::filesystem::last_write_time("Scenes/Saved/Scene.xml");
    m_session->renameBranch(0, "saved since!");
    EXPECT_TRUE(save());
    std::filesystem::last_write_time("Scenes/Saved/Scene.xml", time + std::chrono::milliseconds(1));
    restart();
    EXPECT_TRUE(recovery::isSceneSavedSince(keptSceneDrafts().at(0).info));
    expectRestored({"saved since!"}, {"New Branch 2", "unsaved"});

    restart();
    std::filesystem::remove_all("Scenes/Saved");
    expectRestored({}, {"New Branch 2", "unsaved"});
}

TEST_F(SceneDraftTest, OfTheOtherSceneIsNotLostWhenAnotherIsOpened) {
    m_session->newScene("One");
    m_session->addBranch();
    EXPECT_TRUE(m_draft->leave());
    EXPECT_EQ(keptSceneDrafts().size(), 1U) << "offered in the same run";
    m_session->newScene("Two");
    m_session->addBranch();
    EXPECT_TRUE(save());
    EXPECT_FALSE(m_draft->leave());
    expectRestored({}, {"New Branch 2"});
    EXPECT_EQ(m_session->scene().Name(), "One");
}

TEST_F(SceneDraftTest, ThatCannotBeReadOpensNothing) {
    m_session->newScene("Scene");
    m_session->addBranch();
    restart();
    const std::string file = keptSceneDrafts().at(0).folder + "1-Scene.xml";
    support::writeBytes(file, std::string(support::readBytes(file).size(), '<'));
    m_session->newScene("Open");
    EXPECT_FALSE(m_draft->restore(keptSceneDrafts().at(0).folder));
    EXPECT_FALSE(m_draft->restore("Drafts/missing/1/"));
    EXPECT_EQ(m_session->scene().Name(), "Open");
    EXPECT_NE(m_log.page().find("Unable to restore the draft"), std::string::npos);
}

class ZoneDraftTest : public recovery_tests::DraftTest {
protected:
    ZoneDraftTest() {
        support::makeFolder("Scenes/A");
        restart();
    }
    void restart() {
        m_draft = nullptr;
        m_session = std::make_unique<zone::ZoneSession>(zone::ZoneManager::createForEditing(
            "Scenes/A/clip", 10, zone::scaleBetween({1280, 720}, {640, 360})));
        m_session->setArea({1280, 720});
        m_draft =
            std::make_unique<recovery::ZoneDraft>(*m_session, *m_drafts, "A", "Scenes/A/clip.ogv");
    }
    void draw(const std::string& name, int x) {
        m_session->addZone(name, 10);
        m_session->addPoint(0, 3, x, 20);
    }
    int x() { return m_session->zones().zone(0)->points(3)->front().x; }

    std::unique_ptr<zone::ZoneSession> m_session;
    std::unique_ptr<recovery::ZoneDraft> m_draft;
};

TEST_F(ZoneDraftTest, IsOneStepOnTopOfWhatIsSaved) {
    EXPECT_EQ(m_draft->offered(), nullptr);
    draw("a < b", 40);
    wait();
    until([] { return isOnDisk("a < b"); });
    restart();
    EXPECT_TRUE(keptSceneDrafts().empty()) << "it is the zone editor's to offer";
    ASSERT_NE(m_draft->offered(), nullptr);
    EXPECT_FALSE(m_draft->isSavedSince());
    draw("begun before", 60);
    EXPECT_TRUE(m_draft->restore());
    EXPECT_EQ(m_draft->offered(), nullptr);
    EXPECT_EQ(m_session->zones().getZoneName(0), "a < b");
    EXPECT_EQ(x(), 40);
    m_session->undo();
    EXPECT_EQ(x(), 60);
    m_session->redo();
    m_session->renameZone(0, "named");
    EXPECT_TRUE(m_session->save("Scenes/A/clip.ogv"));
    restart();
    EXPECT_EQ(m_draft->offered(), nullptr);
    EXPECT_EQ(x(), 40);

    m_session->removeZone(0);
    restart();
    m_session->renameZone(0, "saved since, by a longer name");
    EXPECT_TRUE(m_session->save("Scenes/A/clip.ogv"));
    restart();
    EXPECT_TRUE(m_draft->isSavedSince());
    EXPECT_TRUE(m_draft->restore());
    EXPECT_EQ(m_session->zones().zoneCount(), 0);
}

TEST_F(ZoneDraftTest, ThatCannotBeReadWholeChangesNothing) {
    draw("kept", 40);
    restart();
    const std::string file = m_draft->offered()->folder + "1-Zones-ZoneInfo.bin";
    support::writeBytes(file, std::string(support::readBytes(file).size(), 'Z'));
    EXPECT_FALSE(m_draft->restore());
    EXPECT_EQ(m_draft->offered(), nullptr);
    EXPECT_FALSE(m_session->isModified());
}

} // namespace
