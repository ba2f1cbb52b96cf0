#include <algorithm>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "platform/raster/DirtyRegion.h"

using platform::Rect;
using platform::raster::DirtyRegion;

namespace {

std::vector<Rect> sorted(std::vector<Rect> rects) {
    std::sort(rects.begin(), rects.end(), [](const Rect& a, const Rect& b) {
        return std::tie(a.top, a.left) < std::tie(b.top, b.left);
    });
    return rects;
}

std::vector<Rect> regionOf(const std::vector<Rect>& rects) {
    DirtyRegion region;
    for (const Rect& rect : rects) {
        region.add(rect);
    }
    return sorted(region.take());
}

} // namespace

TEST(DirtyRegion, JoinsWhatOverlapsAndKeepsTheRestApart) {
    const std::tuple<const char*, std::vector<Rect>, std::vector<Rect>> cases[] = {
        {"empty rectangles", {{5, 5, 5, 9}, {9, 9, 1, 1}}, {}},
        {"far corners", {{0, 0, 10, 10}, {90, 90, 99, 99}}, {{0, 0, 10, 10}, {90, 90, 99, 99}}},
        {"touching edges", {{0, 0, 10, 10}, {10, 0, 20, 10}}, {{0, 0, 10, 10}, {10, 0, 20, 10}}},
        {"one inside the other", {{0, 0, 50, 50}, {10, 10, 20, 20}}, {{0, 0, 50, 50}}},
        {"a bridge", {{0, 0, 10, 10}, {20, 0, 30, 10}, {5, 5, 25, 8}}, {{0, 0, 30, 10}}},
        {"a join that meets a third",
         {{0, 0, 10, 10}, {12, 12, 14, 14}, {8, 8, 20, 9}, {8, 9, 9, 20}},
         {{0, 0, 20, 20}}},
    };
    for (const auto& [what, added, expected] : cases) {
        EXPECT_EQ(regionOf(added), expected) << what;
    }
}

TEST(DirtyRegion, StaysSmallUnderManyScatteredChanges) {
    DirtyRegion region;
    for (int i = 0; i < 5000; ++i) {
        region.add(Rect::at((i % 100) * 10, (i / 100) * 10, 3, 3));
    }
    const auto rects = region.take();
    EXPECT_LE(rects.size(), 64U);
    Rect all;
    for (const Rect& rect : rects) {
        all = all.united(rect);
    }
    EXPECT_EQ(all, (Rect{0, 0, 993, 493}));
}
