// Loading when there is no memory for one of the model's objects.
#include <cstdlib>
#include <memory>
#include <new>
#include <string>

#include "scene/SceneSession.h"
#include "tests/scene/SceneFixture.h"

namespace {

std::size_t lastBytes = 0;    ///< of the latest allocation in this executable
std::size_t refusedBytes = 0; ///< the next one of this size fails; 0 = none does

} // namespace

// None is inlined: the compiler would take malloc() or free() for the wrong end of an expression.
[[gnu::noinline]] void* operator new(std::size_t bytes) {
    lastBytes = bytes;
    void* memory = bytes == refusedBytes ? nullptr : std::malloc(bytes | 1);
    if (memory == nullptr) {
        refusedBytes = 0;
        throw std::bad_alloc();
    }
    return memory;
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*bytes*/) noexcept {
    std::free(memory);
}

namespace {

using scene_tests::Lines;

/// The next object that T's factory makes cannot be made.
template <typename T>
void refuse() {
    const std::shared_ptr<T> sample = T::create();
    refusedBytes = lastBytes;
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
