#include <cmath>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "track/BothEnds.h"
#include "track/Consensus.h"
#include "track/Geometry.h"

namespace {

using track::joinBothEnds;
using track::PointPair;
using track::Polygon;
using track::Warp;

/// Points of a grid and where `motion` takes them; every third goes elsewhere.
std::vector<PointPair> pairs(const Warp& motion, int side, double apart) {
    std::vector<PointPair> result;
    for (int i = 0; i < side * side; ++i) {
        const track::Point from{100 + apart * (i % side), 50 + apart * std::floor(i / side)};
        track::Point to = motion(from);
        if (i % 3 == 2) {
            to = {to.x + 7 + i, to.y - 9};
        }
        result.push_back({from, to});
    }
    return result;
}

TEST(ConsensusTest, TheMotionOfMostPointsIsFound) {
    const struct {
        Warp motion;
        int side;
        double apart;
    } cases[] = {
        {Warp::translation(5, -3), 2, 8},                          // too few for turns
        {Warp{{1.1, -0.2, 4, 0.2, 1.1, -30, 0, 0, 1}}, 4, 20},     // a similarity
        {Warp{{1.01, 0.008, 4, -0.002, 0.99, 3, 0, 0, 1}}, 7, 20}, // an affine map
    };
    for (const auto& item : cases) {
        const auto given = pairs(item.motion, item.side, item.apart);
        const track::Consensus found = track::findConsensus(given);
        EXPECT_EQ(found.inliers, static_cast<int>(given.size() - given.size() / 3));
        for (const track::Point corner : {track::Point{90, 40}, {160, 120}}) {
            EXPECT_NEAR(found.motion(corner).x, item.motion(corner).x, 1e-6);
            EXPECT_NEAR(found.motion(corner).y, item.motion(corner).y, 1e-6);
        }
    }
    EXPECT_EQ(track::findConsensus({{{1, 1}, {2, 2}}}).inliers, 0);
    EXPECT_EQ(
        track::findConsensus({{{0, 0}, {0, 0}}, {{50, 0}, {90, 9}}, {{0, 50}, {-60, 7}}}).inliers,
        0);
}

TEST(BothEndsTest, EachWayCountsMoreNearItsBeginning) {
    const auto at = [](double x) { return Polygon{{x, 0}, {x + 1, 0}, {x, 1}}; };
    const std::vector<Polygon> forward{at(0), at(0), at(0)};
    const std::vector<Polygon> backward{at(40), at(40), at(40)};
    const auto firstX = [](const std::vector<std::optional<Polygon>>& shapes) {
        std::vector<double> result;
        for (const auto& shape : shapes) {
            result.push_back(shape ? shape->front().x : -1);
        }
        return result;
    };
    using Values = std::vector<double>;
    EXPECT_EQ(firstX(joinBothEnds(forward, backward, 3)), (Values{10, 20, 30}));
    EXPECT_EQ(firstX(joinBothEnds(forward, {at(40)}, 3)), (Values{0, 0, 20}));
    EXPECT_EQ(firstX(joinBothEnds({at(0)}, {at(40)}, 3)), (Values{0, -1, 40}));
    EXPECT_EQ(firstX(joinBothEnds({}, backward, 2)), (Values{40, 40}));
    // Different numbers of corners: the nearer one.
    const Polygon triangle{{7, 7}, {8, 7}, {7, 8}, {6, 6}};
    EXPECT_EQ(firstX(joinBothEnds(forward, {triangle, triangle, triangle}, 3)), (Values{0, 7, 7}));
    EXPECT_TRUE(joinBothEnds({}, {}, 0).empty());
}

TEST(WarpTest, InverseAndPlausibility) {
    const Warp warp{{1.2, 0.3, 20, -0.1, 0.9, 7, 1e-3, -2e-3, 1}};
    const track::Point there = warp({30, 40});
    EXPECT_NEAR(warp.inverse()(there).x, 30, 1e-9);
    EXPECT_NEAR(warp.inverse()(there).y, 40, 1e-9);
    const Polygon square{{0, 0}, {100, 0}, {100, 100}, {0, 100}};
    EXPECT_TRUE(isPlausible(warp, square, 2));
    EXPECT_FALSE(isPlausible(Warp{{-1, 0, 0, 0, 1, 0, 0, 0, 1}}, square, 2)) << "mirrored";
    EXPECT_FALSE(isPlausible(Warp{{2, 0, 0, 0, 2, 0, 0, 0, 1}}, square, 2))
        << "four times as large";
    EXPECT_FALSE(isPlausible(Warp{{1, 0, 0, 0, 1, 0, -0.02, 0, 1}}, square, 100)) << "horizon";
}

} // namespace
