// Which decoded pictures are kept, and that what is kept stays as it was.
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "src/Theora/PlaneCache.h"

namespace {

using theora::PlaneCache;
using theora::TheoraPicture;

constexpr int kSide = 16;
constexpr std::size_t kPictureBytes = kSide * kSide * 3 / 2;

/// A picture whose samples are all `value`.
class FlatPicture {
public:
    explicit FlatPicture(std::uint8_t value) : m_samples(kSide * kSide, value) {
        picture.planes = {{{m_samples.data(), kSide, kSide, kSide},
                           {m_samples.data(), kSide, kSide / 2, kSide / 2},
                           {m_samples.data(), kSide, kSide / 2, kSide / 2}}};
    }
    TheoraPicture picture;

private:
    std::vector<std::uint8_t> m_samples;
};

int valueOf(const PlaneCache& cache, int frame) {
    const auto found = cache.find(frame);
    return found ? found->picture.planes[2].data[kSide / 2 * kSide / 2 - 1] : -1;
}

TEST(PlaneCache, KeepsTheWindowAroundTheCentreWithinItsMemory) {
    PlaneCache cache(kPictureBytes * 21, kSide, kSide, 1, 1);
    EXPECT_EQ(cache.capacity(), 20);
    for (int frame = 0; frame < 200; ++frame) {
        cache.setCentre(frame);
        cache.store(frame, FlatPicture(static_cast<std::uint8_t>(frame)).picture);
    }
    int kept = 0;
    for (int frame = 0; frame < 200; ++frame) {
        if (cache.find(frame)) {
            ++kept;
            EXPECT_EQ(valueOf(cache, frame), frame);
        }
    }
    EXPECT_EQ(kept, 20);
    EXPECT_EQ(valueOf(cache, 199 - cache.behind()), 199 - cache.behind());
    EXPECT_EQ(cache.firstMissingBelow(200, 0), 179);
    EXPECT_EQ(cache.firstMissingBelow(200, 190), 189); // none missing down to the limit
    EXPECT_EQ(cache.firstMissingBelow(100, 0), 99);
}

TEST(PlaneCache, APictureThatIsHeldIsNotOverwritten) {
    PlaneCache cache(kPictureBytes * 5, kSide, kSide, 1, 1);
    cache.store(0, FlatPicture(77).picture);
    const auto held = cache.find(0);
    ASSERT_TRUE(held);
    for (int frame = 1000; frame < 1020; ++frame) {
        cache.setCentre(frame);
        cache.store(frame, FlatPicture(5).picture);
    }
    EXPECT_FALSE(cache.find(0));
    EXPECT_EQ(held->picture.planes[0].data[0], 77);
}

TEST(PlaneCache, WhatIsFarFromTheCentreIsNotTaken) {
    PlaneCache cache(kPictureBytes * 9, kSide, kSide, 1, 1);
    cache.setCentre(100);
    EXPECT_TRUE(cache.wants(100));
    EXPECT_FALSE(cache.wants(100 - cache.behind() - 1));
    EXPECT_FALSE(cache.wants(110));
    cache.store(5, FlatPicture(1).picture);
    EXPECT_FALSE(cache.find(5));
}

TEST(PlaneCache, ARepeatedPictureIsKeptOnce) {
    PlaneCache cache(kPictureBytes * 9, kSide, kSide, 1, 1);
    const struct {
        int frame;
        std::uint64_t identity;
        int value;
    } stored[] = {{0, 1, 10}, {1, 1, 10}, {2, 1, 10}, {3, 2, 20}, {4, 0, 30}, {5, 0, 40}};
    for (const auto& item : stored) {
        FlatPicture flat(static_cast<std::uint8_t>(item.value));
        flat.picture.identity = item.identity;
        cache.setCentre(item.frame);
        cache.store(item.frame, flat.picture);
    }
    for (const auto& item : stored) {
        EXPECT_EQ(valueOf(cache, item.frame), item.value) << item.frame;
    }
    EXPECT_EQ(cache.find(2), cache.find(0));
    cache.store(6, FlatPicture(30).picture, false); // stands for a frame that is missing
    EXPECT_NE(cache.find(6), cache.find(5));
}

} // namespace
