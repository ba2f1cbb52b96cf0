// The keys of zones against their definition, said as plainly as it can be: known tracks, and
// random ones while they are edited.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/Random.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/SessionKeys.h"
#include "zone/ShapeKeys.h"
#include "zone/ZoneSession.h"

namespace zone_tests {
namespace {

using Frames = std::vector<int>;

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

Points pointsOf(const zone::Zone& zone, int frame) {
    const auto points = zone.points(frame);
    return points ? Points(points->begin(), points->end()) : Points();
}

/// Whether `value` is at most one away from the line over `length` frames from `from` to `to`.
bool isNear(int from, int to, int length, int at, int value) {
    const std::int64_t way = std::int64_t{to} - from;
    const std::int64_t own = std::int64_t{value} - from;
    return std::abs(way * at - own * length) <= length;
}

bool blends(const zone::Zone& zone, int from, int to) {
    const Points start = pointsOf(zone, from);
    const Points end = pointsOf(zone, to);
    if (end.size() != start.size()) {
        return false;
    }
    for (int frame = from; frame <= to; ++frame) {
        const Points points = pointsOf(zone, frame);
        if (points.size() != start.size()) {
            return false;
        }
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (!isNear(start[i].x, end[i].x, to - from, frame - from, points[i].x) ||
                !isNear(start[i].y, end[i].y, to - from, frame - from, points[i].y)) {
                return false;
            }
        }
    }
    return true;
}

Frames plainKeys(const zone::Zone& zone, const std::set<int>& fixed = {}, bool heedsFlags = true) {
    Frames keys;
    for (int frame = 0; frame < zone.frameCount(); ++frame) {
        const bool isChange = frame == 0 || fixed.contains(frame) ||
                              (heedsFlags && zone.isActive(frame) != zone.isActive(frame - 1)) ||
                              pointsOf(zone, frame).size() != pointsOf(zone, frame - 1).size();
        const bool isLast = frame == zone.frameCount() - 1;
        if (isChange || isLast || !blends(zone, keys.back(), frame + 1)) {
            keys.push_back(frame);
        }
    }
    return keys;
}

class ShapeKeysTest : public ZoneTest {
protected:
    Frames keysOf(const Lines& shapes) {
        const auto zones = load(zoneBytes("a", shapes), static_cast<int>(shapes.size()));
        zone::ShapeKeys keys;
        keys.compute(*zones->zone(0));
        return keys.frames();
    }
    /// One point goes through these places.
    Frames keysOf(const std::vector<int>& places) {
        Lines shapes;
        for (const int place : places) {
            shapes.push_back(shapeBytes({{0, place}}));
        }
        return keysOf(shapes);
    }
    std::string smoothShapes(int frames);
    void edit(zone::ZoneSession& session, int frames);

    support::Random m_random{99};
};

TEST_F(ShapeKeysTest, KeysStandWhereAMotionTurnsOrTheShapeChanges) {
    EXPECT_EQ(keysOf(std::vector<int>{7}), Frames{0});
    EXPECT_EQ(keysOf({7, 7, 7, 7}), (Frames{0, 3}));
    EXPECT_EQ(keysOf({0, 3, 6, 9, 12}), (Frames{0, 4}));
    EXPECT_EQ(keysOf({0, 10, 20, 30, 30, 30, 30}), (Frames{0, 3, 6}));
    EXPECT_EQ(keysOf({0, 0, 0, 20, 20, 20}), (Frames{0, 2, 3, 5}));
    EXPECT_EQ(keysOf({0, 1, 0, 1, 0}), (Frames{0, 4})) << "one pixel is nothing";
    EXPECT_EQ(keysOf({kLowest, kLowest, kHighest, kHighest}), (Frames{0, 1, 2, 3}));
    const std::string one = shapeBytes({{1, 1}});
    const std::string two = shapeBytes({{1, 1}, {9, 9}});
    EXPECT_EQ(keysOf({one, one, one, two, two, one}), (Frames{0, 2, 3, 4, 5}));
    const std::string off = shapeBytes({{1, 1}}, 0);
    EXPECT_EQ(keysOf({one, one, off, off, off, one, one}), (Frames{0, 2, 5, 6}));
    zone::ShapeKeys keys;
    keys.compute(*zone::Zone::create(0));
    EXPECT_EQ(keys.frames(), Frames());
    EXPECT_EQ(keys.before(0), std::nullopt);
}

/// Points that move evenly for a while, then otherwise; a second point some of the time.
std::string ShapeKeysTest::smoothShapes(int frames) {
    Lines shapes;
    double place = 0;
    double speed = 0;
    for (int frame = 0; frame < frames; ++frame) {
        speed = m_random.below(9) == 0 ? m_random.below(9) / 3.0 - 1 : speed;
        place += speed;
        Points points{{static_cast<int>(place), m_random.below(30) == 0 ? 2 : 0}};
        points.resize(frame / 40 % 2 == 0 ? 1 : 2);
        shapes.push_back(shapeBytes(points, frame / 60 % 2 == 0 ? 1 : 0));
    }
    return zoneBytes("a", shapes);
}

void ShapeKeysTest::edit(zone::ZoneSession& session, int frames) {
    const int frame = m_random.below(frames);
    session.setProgressChanges(m_random.below(4) == 0);
    switch (m_random.below(8)) {
    case 0:
        session.setActive(0, frame, m_random.below(2) == 0);
        return;
    case 1:
        session.addPoint(0, frame, m_random.below(60), 5);
        return;
    case 2:
        session.undo();
        return;
    case 3:
        session.removeZone(0);
        session.undo();
        return;
    default:
        const Points points = pointsOf(*session.zones().zone(0), frame);
        if (!points.empty() && session.hitTest(0, frame, points[0].x, points[0].y)) {
            session.moveSelectedPoint(0, frame, points[0].x + m_random.below(7) - 3, points[0].y);
        }
    }
}

TEST_F(ShapeKeysTest, RandomTracksHaveTheKeysOfTheDefinitionBeforeAndAfterEachEdit) {
    for (int round = 0; round < 40; ++round) {
        const int frames = 1 + m_random.below(150);
        const auto zones = load(smoothShapes(frames), frames);
        ASSERT_TRUE(zones);
        zone::ZoneSession session(zones);
        session.setArea({1280, 720});
        zone::SessionKeys keys(session);
        for (int step = 0; step < 30; ++step) {
            const Frames expected = plainKeys(*zones->zone(0));
            const zone::ShapeKeys& found = keys.of(0);
            ASSERT_EQ(found.frames(), expected) << round << ", " << step;
            ASSERT_EQ(found.before(frames), expected.back());
            ASSERT_TRUE(found.contains(0));
            std::set<int> fixed;
            for (int count = m_random.below(4); count > 0; --count) {
                fixed.insert(m_random.below(frames));
            }
            const zone::Zone& zone = *zones->zone(0);
            ASSERT_EQ(found.through(zone, fixed), plainKeys(zone, fixed)) << round << ", " << step;
            ASSERT_EQ(zone::courseKeys(zone, fixed), plainKeys(zone, fixed, false)) << round;
            for (int edits = m_random.below(3); edits >= 0; --edits) {
                edit(session, frames);
            }
        }
        EXPECT_TRUE(keys.of(1).frames().empty());
    }
}

} // namespace
} // namespace zone_tests
