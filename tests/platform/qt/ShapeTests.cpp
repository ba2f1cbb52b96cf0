// Which pixels of a window with rounded corners are its own.
#include <vector>

#include <gtest/gtest.h>

#include "platform/qt/QtConvert.h"

using platform::qt::roundedRegion;

TEST(RoundedRegion, LosesThePixelsWhoseMiddleLiesOutsideOfTheCorner) {
    const struct {
        int radius;
        std::vector<QPoint> outside; ///< of the top left corner
    } cases[] = {
        {0, {}},
        {1, {}},
        {3, {{0, 0}}},
        {4, {{0, 0}, {1, 0}, {0, 1}}},
    };
    constexpr platform::Size kSize{20, 12};
    for (const auto& c : cases) {
        QRegion expected(0, 0, kSize.width, kSize.height);
        for (const QPoint& at : c.outside) {
            for (const int x : {at.x(), kSize.width - 1 - at.x()}) {
                for (const int y : {at.y(), kSize.height - 1 - at.y()}) {
                    expected -= QRect(x, y, 1, 1);
                }
            }
        }
        EXPECT_EQ(roundedRegion(kSize, c.radius), expected) << c.radius;
    }
}

TEST(RoundedRegion, OfAWindowSmallerThanItsCornersStaysInside) {
    EXPECT_TRUE(roundedRegion({0, 0}, 5).isEmpty());
    EXPECT_EQ(roundedRegion({6, 4}, 50).boundingRect(), QRect(0, 0, 6, 4));
}
