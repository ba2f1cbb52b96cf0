// Lines and ellipses against pictures made with GDI, and lines against the rule itself.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/raster/Shapes.h"

using platform::Point;
using platform::Rect;
using platform::Size;
using platform::raster::ellipseRow;
using platform::raster::walkLine;

namespace {

std::vector<Point> pixelsOf(Point from, Point to, const Rect& clip = {-1000, -1000, 1000, 1000}) {
    std::vector<Point> pixels;
    walkLine(from, to, clip, [&](Point pixel) { pixels.push_back(pixel); });
    return pixels;
}

std::string pictureOf(Size box) {
    std::string picture;
    for (int y = 0; y < box.height; ++y) {
        const auto row = ellipseRow(box, y);
        for (int x = 0; x < box.width; ++x) {
            const bool inside = x >= row.left && x < row.right;
            const bool filled = x >= row.innerLeft && x < row.innerRight;
            picture += filled ? 'o' : inside ? '#' : '.';
        }
        picture += '\n';
    }
    return picture;
}

} // namespace

TEST(WalkLine, TakesEachPixelNearestToTheTrueLineAndLeavesOutTheEnd) {
    for (int dx = -12; dx <= 12; ++dx) {
        for (int dy = -12; dy <= 12; ++dy) {
            const int length = std::max(std::abs(dx), std::abs(dy));
            const auto pixels = pixelsOf({20, 20}, {20 + dx, 20 + dy});
            ASSERT_EQ(pixels.size(), static_cast<std::size_t>(length)) << dx << "," << dy;
            for (int i = 0; i < length; ++i) {
                // ceil(v - 0.5) rounds halves to the smaller coordinate: up and left.
                const double part = static_cast<double>(i) / length;
                const Point expected{20 + static_cast<int>(std::ceil(part * dx - 0.5)),
                                     20 + static_cast<int>(std::ceil(part * dy - 0.5))};
                ASSERT_EQ(pixels[static_cast<std::size_t>(i)], expected) << dx << "," << dy;
            }
        }
    }
}

TEST(WalkLine, ShowsTheSamePixelsThroughAClipAsWithoutOne) {
    const Rect clip{3, 2, 9, 8};
    const Point ends[] = {{0, 0}, {30, 11}, {11, 30}, {-20, 5}, {5, -20}, {8, 7}, {3, 2}, {40, 2}};
    for (const Point from : ends) {
        for (const Point to : ends) {
            auto expected = pixelsOf(from, to);
            std::erase_if(expected, [&](Point p) { return !clip.contains(p); });
            EXPECT_EQ(pixelsOf(from, to, clip), expected);
        }
    }
}

TEST(WalkLine, DrawsEndlessLinesInTheTimeOfTheirVisiblePart) {
    constexpr int kFar = 2147483647;
    EXPECT_EQ(pixelsOf({-kFar, 5}, {kFar, 5}, {0, 0, 10, 10}).size(), 10U);
    EXPECT_EQ(pixelsOf({-kFar - 1, -kFar - 1}, {kFar, kFar}, {0, 0, 10, 10}).size(), 10U);
    EXPECT_TRUE(pixelsOf({kFar, 0}, {kFar, kFar}, {0, 0, 10, 10}).empty());
}

TEST(EllipseRow, MatchesGdi) {
    const struct {
        Size box;
        const char* picture; ///< the upper half will do: the other is its mirror image
    } cases[] = {
        {{1, 1}, ".\n"},
        {{6, 1}, "######\n"},
        {{2, 3}, "##\n##\n##\n"},
        {{3, 3}, ".#.\n#o#\n.#.\n"},
        {{6, 6}, "..##..\n.#oo#.\n#oooo#\n"},
        {{9, 5}, "..#####..\n.#ooooo#.\n#ooooooo#\n"},
        {{16, 16},
         ".....######.....\n"
         "....#oooooo#....\n"
         "..##oooooooo##..\n"
         "..#oooooooooo#..\n"
         ".#oooooooooooo#.\n"
         "#oooooooooooooo#\n"
         "#oooooooooooooo#\n"
         "#oooooooooooooo#\n"},
    };
    for (const auto& c : cases) {
        const std::string picture = pictureOf(c.box);
        EXPECT_EQ(picture.substr(0, std::string(c.picture).size()), c.picture);
        EXPECT_EQ(std::string(picture.rbegin() + 1, picture.rend()) + '\n', picture);
    }
}
