// The course between keys, and which frames an author would call keys.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "tests/zone/ShapeFixture.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/EditContext.h"
#include "zone/ShapeBlend.h"
#include "zone/ShapeEdits.h"
#include "zone/ShapeKeys.h"

namespace zone_tests {
namespace {

using platform::Point;
using zone::BlendWay;
using zone::NewShapes;
using Name = zone::StepLabel::Name;

class ShapeBlendTest : public ShapeTest {};

TEST_F(ShapeBlendTest, ASmoothCourseMeetsItsKeysTurnsGentlyAndNeverLeavesTheirRange) {
    // A quarter of a circle every 10 frames.
    std::vector<Frame> frames(41);
    const auto circle = [](int frame) {
        return Point{static_cast<int>(std::lround(500 + 300 * std::cos(frame * 0.157079633))),
                     static_cast<int>(std::lround(400 + 300 * std::sin(frame * 0.157079633)))};
    };
    for (int frame = 0; frame <= 40; ++frame) {
        frames[static_cast<std::size_t>(frame)].points = {circle(frame)};
    }
    begin(frames);
    const int keys[] = {0, 10, 20, 30, 40};
    const auto worst = [&](BlendWay way) {
        const auto stretch = zone::blendedShapes(held(), keys, way, {});
        double most = 0;
        for (int frame = 0; frame <= 40; ++frame) {
            const Point at = stretch->shapes().points(stretch->shapes().indexOf(frame))[0];
            const Point wanted = circle(frame);
            if (frame >= 10 && frame <= 30) { // in the outer gaps it has less to go by
                most = std::max(most, std::hypot(at.x - wanted.x, at.y - wanted.y));
            }
            EXPECT_TRUE(frame % 10 != 0 || at == wanted);
            const Point from = circle(frame / 10 * 10);
            const Point to = circle((frame + 9) / 10 * 10);
            EXPECT_EQ(std::clamp(at.x, std::min(from.x, to.x), std::max(from.x, to.x)), at.x);
            EXPECT_EQ(std::clamp(at.y, std::min(from.y, to.y), std::max(from.y, to.y)), at.y);
        }
        return most;
    };
    EXPECT_GT(worst(BlendWay::straight), 80);
    EXPECT_LT(worst(BlendWay::smooth), 40);
    // Gap by gap it is the same course.
    const auto whole = zone::blendedShapes(held(), keys, BlendWay::smooth, {});
    for (std::size_t first = 0; first < 4; ++first) {
        const auto gap = std::span(keys).subspan(first, 2);
        const auto part = zone::blendedShapes(held(), gap, BlendWay::smooth, keys);
        for (int frame = gap[0]; frame <= gap[1]; ++frame) {
            EXPECT_EQ(part->shapes().points(part->shapes().indexOf(frame - gap[0]))[0],
                      whole->shapes().points(whole->shapes().indexOf(frame))[0])
                << frame;
        }
    }
}

TEST_F(ShapeBlendTest, APointOnAnEdgeFollowsItsNeighboursAndTheKeysOfAnAuthorAreWhereHeShaped) {
    std::vector<Frame> frames(20, {{{0, 0}, {100, 0}, {100, 100}}});
    for (std::size_t frame = 10; frame < 20; ++frame) { // turned, and twice as large
        frames[frame].points = {{300, 0}, {300, 200}, {100, 200}};
    }
    frames[15].points = {{5, 5}};
    frames[5].points = {{1, 1}, {2, 2}, {3, 3}};
    begin(frames);
    // As the timeline finds them: where a shape was held until, too.
    const int derived[] = {0, 4, 5, 6, 9, 10, 14, 15, 16, 19};
    EXPECT_EQ(zone::authoredKeys(held(), derived, {}), (std::vector<int>{0, 5, 10, 15}));
    EXPECT_EQ(zone::authoredKeys(held(), derived, {6, 12}),
              (std::vector<int>{0, 5, 6, 10, 12, 15}));
    EXPECT_EQ(zone::keysAround(std::vector<int>{0, 5, 10}, 5), (std::vector<int>{0, 5, 10}));
    EXPECT_EQ(zone::keysAround(std::vector<int>{0, 5, 10}, 12), (std::vector<int>{10}));

    EXPECT_EQ(zone::edgeAt(frames[0].points, {25, 3}, 4), 0);
    EXPECT_EQ(zone::edgeAt(frames[0].points, {52, 50}, 4), 2) << "the closing line";
    EXPECT_EQ(zone::edgeAt(frames[0].points, {25, 5}, 4), -1);
    replace(Name::addPoint, zone::withPointEverywhere(held(), 2, 0, {25, -4}));
    EXPECT_EQ(held().shape(2)->points[1], (Point{25, -4}));
    EXPECT_EQ(held().shape(12)->points[1], (Point{308, 50}));
    EXPECT_EQ(held().shape(15)->points.size(), 2U) << "no edge there";
}

TEST_F(ShapeBlendTest, TheEndsOfABlendedGapStayKeysUntilSomethingElseIsPutThere) {
    using Keys = std::vector<int>;
    std::vector<Frame> frames(31);
    for (int frame = 0; frame <= 30; ++frame) { // nobody knows how they came to be so
        const int x = frame < 10 ? 10 * frame : frame < 20 ? 90 + frame : 10 * frame - 90;
        frames.at(static_cast<std::size_t>(frame)).points = {{x, 0}};
    }
    begin(frames);
    const auto namedKeys = [this] {
        const zone::ZoneEditing& editing = m_session->editingOf(0);
        Keys keys = zone::courseKeys(held(), editing.knownKeys());
        std::erase_if(keys, [&](int key) { return editing.isBlended(key); });
        return keys;
    };
    const Keys keys{0, 10, 20, 30};
    ASSERT_EQ(namedKeys(), keys);
    const auto fill = [&](const Keys& ends) {
        NewShapes shapes{*zone::blendedShapes(held(), ends, BlendWay::smooth, ends)};
        shapes.filled = zone::blendedGaps(held(), ends);
        replace(Name::interpolate, shapes);
    };
    fill(keys);
    ASSERT_GT(zone::courseKeys(held(), {}).size(), 5U);
    EXPECT_EQ(namedKeys(), keys);
    replace(Name::interpolate, *zone::withoutKeys(held(), keys, {9, 12}, BlendWay::smooth));
    EXPECT_EQ(namedKeys(), (Keys{0, 20, 30}));
    ASSERT_TRUE(m_session->undo());
    EXPECT_EQ(namedKeys(), keys);
    ASSERT_TRUE(m_session->redo());
    fill({0, 20, 30});
    replace(Name::applyShape, zone::applied(held(), 5, {5, 9}));
    EXPECT_EQ(namedKeys(), (Keys{0, 5, 8, 9, 20, 30})) << "held, then a jump";
}

TEST_F(ShapeBlendTest, KeysOfWhatWasFollowedAreNoneOfTheAuthors) {
    using Keys = std::vector<int>;
    const Keys keys{0, 20, 40, 42, 44, 47, 49, 51, 70, 73, 90};
    EXPECT_EQ(zone::keysSetByHand(keys, {}, {}), (Keys{0, 20, 40, 42, 49, 51, 70, 73, 90}))
        << "with two others close by on either side, in an earlier visit";
    EXPECT_EQ(zone::keysSetByHand(keys, {47}, {}), keys);
    const zone::FollowedFrames stretches[] = {{{10, 50}, true}, {{40, 44}, false}};
    EXPECT_EQ(zone::keysSetByHand(keys, {20}, std::span(stretches).first(1)),
              (Keys{0, 20, 51, 70, 73, 90}));
    EXPECT_EQ(zone::keysSetByHand(keys, {}, stretches), (Keys{0, 40, 42, 51, 70, 73, 90}))
        << "the last stretch tells";
}

} // namespace
} // namespace zone_tests
