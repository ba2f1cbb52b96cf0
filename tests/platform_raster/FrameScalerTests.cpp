#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/raster/FrameScaler.h"
#include "tests/support/gui/FakeGui.h"

using platform::Bitmap;
using platform::Rect;
using platform::raster::nearestIndex;
using platform::raster::scaleFrame;

TEST(NearestIndex, PicksThePixelsThatColorOnColorPicks) {
    const std::pair<int, std::vector<int>> cases[] = {
        {8, {1, 3, 5, 7}},          {4, {0, 1, 2, 3}}, {2, {0, 0, 0, 1, 1, 1}}, {1, {0, 0, 0}},
        {3, {0, 0, 1, 1, 1, 2, 2}}, {7, {6}},          {5, {1, 2, 4}},
    };
    for (const auto& [source, expected] : cases) {
        const int target = static_cast<int>(expected.size());
        for (int i = 0; i < target; ++i) {
            EXPECT_EQ(nearestIndex(i, source, target), expected[static_cast<std::size_t>(i)])
                << source << " to " << target;
        }
    }
}

TEST(ScaleFrame, DrawsOnlyWhatTheClipShowsOfTheSamePicture) {
    test::FakeFrameBuffer frame({30, 20});
    std::iota(frame.bits(), frame.bits() + frame.byteCount(), std::uint8_t{0});
    Bitmap whole({50, 50});
    Bitmap part({50, 50});
    const Rect target{-10, -5, 70, 60};
    const Rect clip{7, 9, 31, 40};
    scaleFrame(frame, whole, target, {0, 0, 50, 50});
    scaleFrame(frame, part, target, clip);
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 50; ++x) {
            ASSERT_EQ(part.at(x, y), clip.contains({x, y}) ? whole.at(x, y) : 0U);
        }
    }
}
