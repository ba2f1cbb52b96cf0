#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Bitmap.h"
#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/raster/FrameScaler.h"
#include "platform/raster/StillScaler.h"
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

TEST(ScaleFrameSmoothly, GivesTheSamePixelsAsAStillOfThatPicture) {
    for (const platform::Size size : {platform::Size{30, 20}, {1, 1}, {2, 5}, {3, 1}, {101, 7}}) {
        test::FakeFrameBuffer frame(size); // not a byte longer than its pixels
        std::iota(frame.bits(), frame.bits() + frame.byteCount(), std::uint8_t{7});
        Bitmap still(size);
        for (int y = 0; y < size.height; ++y) {
            const std::uint8_t* from =
                frame.bits() + static_cast<std::ptrdiff_t>(size.height - 1 - y) * frame.rowBytes();
            for (int x = 0; x < size.width; ++x, from += 3) {
                still.row(y)[x] = platform::rgb(from[2], from[1], from[0]);
            }
        }
        for (const Rect& place : {Rect{-10, -5, 70, 60}, {5, 6, 31, 27}, {40, 3, 47, 5}}) {
            const Rect clip{1, 2, 49, 48};
            Bitmap expected({50, 50});
            Bitmap drawn({50, 50});
            platform::raster::drawStill(still, expected, place, clip);
            platform::raster::drawFrameSmoothly(frame, drawn, place, clip);
            for (int y = 0; y < 50; ++y) {
                ASSERT_TRUE(std::equal(drawn.row(y), drawn.row(y) + 50, expected.row(y)))
                    << size.width << " x " << size.height << ", row " << y;
            }
        }
    }
}
