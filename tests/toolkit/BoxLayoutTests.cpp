// Sharing a length among neighbours.
#include <tuple>

#include <gtest/gtest.h>

#include "toolkit/BoxLayout.h"

using Lengths = std::vector<int>;

TEST(BoxLayout, SharesWhatFixedPartsLeave) {
    const std::tuple<const char*, std::vector<toolkit::BoxPart>, int, int, Lengths> cases[] = {
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
    for (const auto& [what, parts, available, gap, lengths] : cases) {
        EXPECT_EQ(toolkit::shareLength(parts, available, gap), lengths) << what;
    }
}

TEST(BoxLayout, CentresInTheCellAsFarAsThePaddingAllows) {
    EXPECT_EQ(toolkit::centredStart(0, 33, 0, 12, 18), 3) << "pushed up by its padding";
    EXPECT_EQ(toolkit::centredStart(10, 20, 0, 0, 30), 10) << "too large: from the start";
}
