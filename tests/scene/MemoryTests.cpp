// Loading when there is no memory for one of the model's objects.
#include <memory>
#include <string>

#include "scene/SceneSession.h"
#include "tests/scene/SceneFixture.h"
#include "tests/support/RefusedMemory.h"

namespace {

using scene_tests::Lines;
using support::refusedBytes;

/// The next object that T's factory makes cannot be made.
template <typename T>
void refuse() {
    const std::shared_ptr<T> sample = T::create();
    refusedBytes = support::lastBytes.load();
}

class MemoryTest : public scene_tests::SceneTest {
protected:
    ~MemoryTest() override { refusedBytes = 0; }
};

TEST_F(MemoryTest, ALoadThatLacksItFailsWithItsReasonAndKeepsTheBranchesReadSoFar) {
    const std::string text = "<S><Branch/><Branch><Action/></Branch><Name>later</Name></S>";
    refuse<scene::Branch>();
    EXPECT_FALSE(load(text));
    EXPECT_EQ(m_log.newErrors(), Lines{"Unable to load branch"});
    refuse<scene::Action>();
    EXPECT_FALSE(load(text));
    EXPECT_EQ(m_log.newErrors(), (Lines{"Unable to create action", "Unable to load branch"}));
    EXPECT_EQ(m_scene->branchCount(), 1);
    refuse<scene::BranchManager>();
    EXPECT_FALSE(m_scene->Load("B"));
    EXPECT_EQ(m_log.newErrors(), Lines{"Unable to create branch manager"});
    EXPECT_EQ(m_scene->Name(), "A") << "nothing else was begun";
}

TEST_F(MemoryTest, WithoutItNothingNewIsMade) {
    refuse<scene::BranchManager>();
    EXPECT_FALSE(scene::SceneManager::create());
    refuse<scene::Branch>();
    EXPECT_FALSE(m_scene->AddBranch());
    scene::SceneSession session(m_scene);
    refuse<scene::Branch>();
    EXPECT_FALSE(session.addBranch() || session.history().canUndo());
    m_scene->AddBranch();
    refuse<scene::BranchManager>();
    EXPECT_FALSE(m_scene->newScene("new"));
    EXPECT_EQ(m_scene->Name() + "|" + m_scene->FirstBranch(), "|New Branch 2");
}

} // namespace
