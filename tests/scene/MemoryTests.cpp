// Loading when there is no memory for one of the model's objects.
#include <cstdlib>
#include <new>

#include "tests/scene/SceneFixture.h"

namespace {

/// What the allocations of this executable do: the `countdown`-th one of `refusedBytes` fails.
struct Allocations {
    std::size_t lastBytes = 0;
    std::size_t refusedBytes = 0;
    int countdown = 0;
};
Allocations allocations;

} // namespace

void* operator new(std::size_t bytes) {
    allocations.lastBytes = bytes;
    const bool counts = allocations.countdown > 0 && bytes == allocations.refusedBytes;
    void* memory = counts && --allocations.countdown == 0 ? nullptr : std::malloc(bytes | 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

// Not inlined: the compiler would take free() for the wrong end of a new expression.
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*bytes*/) noexcept {
    std::free(memory);
}

namespace {

using scene_tests::Lines;

/// The `number`-th object that T's factory makes from now on cannot be made.
template <typename T>
void refuse(int number) {
    const std::shared_ptr<T> sample = T::create();
    allocations.refusedBytes = allocations.lastBytes;
    allocations.countdown = number;
}

class MemoryTest : public scene_tests::SceneTest {
protected:
    ~MemoryTest() override { allocations.countdown = 0; }
};

TEST_F(MemoryTest, ALoadThatLacksItFailsWithItsReasonAndKeepsTheBranchesReadSoFar) {
    const std::string text = "<S><Branch/><Branch><Action/></Branch><Name>later</Name></S>";
    refuse<scene::Branch>(2);
    EXPECT_FALSE(load(text));
    EXPECT_EQ(m_log.newErrors(), Lines{"Unable to load branch"});
    EXPECT_EQ(m_scene->branchCount(), 1);
    EXPECT_EQ(m_scene->Name(), "A");
    refuse<scene::Action>(1);
    EXPECT_FALSE(load(text));
    EXPECT_EQ(m_log.newErrors(), (Lines{"Unable to create action", "Unable to load branch"}));
    EXPECT_EQ(m_scene->branchCount(), 1);
    refuse<scene::BranchManager>(1);
    EXPECT_FALSE(m_scene->Load("B"));
    EXPECT_EQ(m_log.newErrors(), Lines{"Unable to create branch manager"});
    EXPECT_EQ(m_scene->Name(), "A") << "nothing else was begun";
}

TEST_F(MemoryTest, WithoutItNothingNewIsMade) {
    m_scene->AddBranch();
    refuse<scene::Branch>(1);
    EXPECT_FALSE(m_scene->AddBranch());
    refuse<scene::BranchManager>(1);
    EXPECT_FALSE(m_scene->newScene("new"));
    EXPECT_EQ(m_scene->Name() + "|" + m_scene->FirstBranch(), "|New Branch 2");
    EXPECT_EQ(m_scene->branchCount(), 1);
    refuse<scene::BranchManager>(1);
    EXPECT_FALSE(scene::SceneManager::create());
    m_scene->AddBranch();
    EXPECT_EQ(m_scene->branchID(1), "New Branch 3") << "the failed one took no number";
}

} // namespace
