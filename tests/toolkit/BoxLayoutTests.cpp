// Sharing a length among neighbours.
#include <gtest/gtest.h>

#include "toolkit/BoxLayout.h"

using toolkit::BoxPart;
using toolkit::centredStart;
using toolkit::shareLength;

TEST(BoxLayout, SharesWhatFixedPartsLeave) {
    const struct {
        const char* what;
        std::vector<BoxPart> parts;
        int available;
        int gap;
        std::vector<int> lengths;
    } cases[] = {
        {"nothing", {}, 100, 5, {}},
        {"one takes all", {{}}, 100, 5, {100}},
        {"fixed and rest", {{30, 0, 0, 0}, {}}, 100, 10, {30, 60}},
        {"odd pixels go to the first", {{}, {}, {}}, 101, 0, {34, 34, 33}},
        {"padding is taken first", {{0, 20, 0, 0}, {}}, 100, 0, {40, 40}},
        {"a lowest size", {{0, 0, 70, 0}, {}}, 100, 0, {70, 30}},
        {"a highest size", {{0, 0, 0, 20}, {}}, 100, 0, {20, 80}},
        {"a wish beyond its limit", {{90, 0, 0, 50}, {}}, 100, 0, {50, 50}},
        {"too much wished", {{80, 0, 0, 0}, {80, 0, 0, 0}, {}}, 100, 0, {80, 80, 0}},
        {"no room at all", {{}, {}}, -50, 0, {0, 0}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(shareLength(c.parts, c.available, c.gap), c.lengths) << c.what;
    }
}

TEST(BoxLayout, CentresInTheCellAsFarAsThePaddingAllows) {
    EXPECT_EQ(centredStart(0, 33, 1, 1, 25), 4) << "a combo in its row";
    EXPECT_EQ(centredStart(0, 33, 8, 0, 18), 8) << "a box pushed down by its padding";
    EXPECT_EQ(centredStart(0, 33, 0, 12, 18), 3) << "and up";
    EXPECT_EQ(centredStart(10, 20, 0, 0, 30), 10) << "too large: from the start";
}
