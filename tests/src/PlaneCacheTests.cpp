// Which decoded pictures are kept, and that what is kept stays as it was.
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "src/Theora/PlaneCache.h"

namespace {

using theora::PlaneCache;

constexpr int kSide = 16;
constexpr std::size_t kPictureBytes = kSide * kSide * 3 / 2;

/// Looks at `frame` and stores a picture for it whose samples are all `value`.
void visit(PlaneCache& cache, int frame, int value, std::uint64_t identity = 0) {
    const std::vector<std::uint8_t> samples(kSide * kSide, static_cast<std::uint8_t>(value));
    const theora::TheoraPlane luma{samples.data(), kSide, kSide, kSide};
    const theora::TheoraPlane chroma{samples.data(), kSide, kSide / 2, kSide / 2};
    cache.setCentre(frame);
    cache.store(frame, {{luma, chroma, chroma}, 1, 1, identity});
}

int valueOf(const PlaneCache& cache, int frame) {
    const auto found = cache.find(frame);
    return found ? found->picture.planes[2].data[kSide / 2 * kSide / 2 - 1] : -1;
}

TEST(PlaneCache, KeepsTheWindowAroundTheCentreWithinItsMemory) {
    PlaneCache cache(kPictureBytes * 21, kSide, kSide, 1, 1);
    EXPECT_EQ(cache.capacity(), 20);
    for (int frame = 0; frame < 200; ++frame) {
        visit(cache, frame, frame);
    }
    for (int frame = 0; frame < 200; ++frame) {
        EXPECT_EQ(valueOf(cache, frame), frame < 180 ? -1 : frame);
    }
    EXPECT_EQ(cache.firstMissingBelow(200, 0), 179);
    EXPECT_EQ(cache.firstMissingBelow(200, 190), 189); // none missing down to the limit
    EXPECT_EQ(cache.firstMissingBelow(100, 0), 99);
    EXPECT_FALSE(cache.wants(199 - cache.behind() - 1));
    EXPECT_TRUE(cache.wants(199 + cache.ahead()));
    EXPECT_FALSE(cache.wants(199 + cache.ahead() + 1));
}

TEST(PlaneCache, APictureThatIsHeldIsNotOverwritten) {
    PlaneCache cache(kPictureBytes * 5, kSide, kSide, 1, 1);
    visit(cache, 0, 77);
    const auto held = cache.find(0);
    ASSERT_TRUE(held);
    for (int frame = 1000; frame < 1020; ++frame) {
        visit(cache, frame, 5);
    }
    EXPECT_FALSE(cache.find(0));
    EXPECT_EQ(held->picture.planes[0].data[0], 77);
}

TEST(PlaneCache, ARepeatedPictureIsKeptOnce) {
    PlaneCache cache(kPictureBytes * 9, kSide, kSide, 1, 1);
    const struct {
        int frame;
        std::uint64_t identity;
        int value;
    } stored[] = {{0, 1, 10}, {1, 1, 10}, {2, 1, 10}, {3, 2, 20}, {4, 0, 30}, {5, 0, 40}};
    for (const auto& item : stored) {
        visit(cache, item.frame, item.value, item.identity);
    }
    for (const auto& item : stored) {
        EXPECT_EQ(valueOf(cache, item.frame), item.value) << item.frame;
    }
    EXPECT_EQ(cache.find(2), cache.find(0));
    EXPECT_NE(cache.find(5), cache.find(4));
}

} // namespace
