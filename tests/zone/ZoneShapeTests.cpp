#include "tests/zone/ZoneFixture.h"
#include "zone/ZoneView.h"

namespace zone_tests {
namespace {

using platform::Point;

constexpr int kHighest = 0x7FFFFFFF;
constexpr int kLowest = -kHighest - 1;

zone::ZoneShape shapeOf(const Points& points, Point center = {}) {
    zone::ZoneShape shape;
    shape.points = points;
    shape.centerX = center.x;
    shape.centerY = center.y;
    return shape;
}

using ZoneShapeTest = ZoneTest;

TEST_F(ZoneShapeTest, AMovedPointIsClampedToTheCurrentManagersArea) {
    struct Case {
        platform::Size area;
        Point to, stored;
    };
    const Case cases[]{{{1280, 720}, {-5, 720}, {0, 719}},
                       {{1280, 720}, {1280, -1}, {1279, 0}},
                       {{0, -3}, {5000, kHighest}, {5000, kHighest}},
                       {{-3, 0}, {-1, kLowest}, {0, 0}}};
    zone::ZoneShape shape = shapeOf({{1, 1}, {2, 2}});
    Point delta;
    for (const Case& c : cases) {
        m_manager->videoWidth = c.area.width;
        m_manager->videoHeight = c.area.height;
        EXPECT_FALSE(shape.movePoint(1, c.to.x, c.to.y, delta));
        EXPECT_EQ(shape.points, (Points{{1, 1}, c.stored}));
    }
    zone::setCurrentZoneManager(nullptr);
    shape.setPoint(0, -4, 9999);
    shape.setPoint(-1, 5, 5); // no point, yet not worth a message
    EXPECT_EQ(shape.points[0], (Point{0, 9999}));
    EXPECT_EQ(m_log.newErrors(), Lines{});
    shape.setPoint(2, 5, 5);
    shape.setPoint(-2, 5, 5);
    EXPECT_EQ(m_log.newErrors(), Lines(2, "..\\ZoneShape.cpp:368 Invalid point index"));
}

TEST_F(ZoneShapeTest, AHandleBoxExcludesItsRightAndBottomEdges) {
    const zone::ZoneShape shape = shapeOf({{100, 100}, {104, 104}, {9, 9}}, {104, 300});
    const int cases[][3] = {{92, 92, 0},   {91, 92, -1},   {92, 91, -1},   {107, 107, 0},
                            {108, 107, 1}, {112, 104, -1}, {104, 112, -1}, {96, 292, 3},
                            {111, 307, 3}, {112, 300, -1}, {104, 308, -1}};
    for (const auto& [x, y, handle] : cases) {
        EXPECT_EQ(shape.hitTest(x, y), handle) << x << ", " << y;
    }
    EXPECT_EQ(shapeOf({{kHighest, kLowest}}).hitTest(kLowest, kHighest), -1);
    EXPECT_EQ(shapeOf({{100, 100}, {104, 104}, {9, 9}}, {100, 100}).hitTest(100, 100), 0)
        << "a point wins over the centre";
    EXPECT_EQ(shapeOf({{100, 100}, {200, 200}}, {300, 300}).hitTest(300, 300), -1)
        << "two points have no centre handle";
}

TEST_F(ZoneShapeTest, PointsComeBehindTheGivenOneAndGoByIndex) {
    struct Case {
        int after, index;
        const char* points;
    };
    const Point p{9, 9};
    const Case cases[]{{-1, 2, "1,1;2,2;9,9"},
                       {0, 1, "1,1;9,9;2,2"},
                       {1, 2, "1,1;2,2;9,9"},
                       {2, -1, "1,1;2,2"},
                       {-3, -1, "1,1;2,2"}};
    for (const Case& c : cases) {
        zone::ZoneShape shape = shapeOf({{1, 1}, {2, 2}});
        EXPECT_EQ(shape.insertPoint(c.after, p.x, p.y), c.index) << c.after;
        EXPECT_EQ(shape.recordSize, c.index == -1 ? 0U : 32U) << "until the first change";
        shape.removePoint(-1);
        shape.removePoint(shape.pointCount());
        EXPECT_EQ(shown(&shape), c.points) << c.after;
        shape.removePoint(0);
        EXPECT_EQ(shown(&shape), c.points + 4);
        EXPECT_EQ(shape.recordSize, c.index == -1 ? 16U : 24U);
    }
    EXPECT_EQ(zone::ZoneShape{}.insertPoint(-2, 1, 1), 0) << "an empty shape takes it anyhow";
    zone::ZoneShape shape = shapeOf({p}, p);
    shape.active = false;
    const auto copy = zone::ZoneShape::copyFrom(shape);
    EXPECT_EQ(shown(copy.get()), "9,9!");
    EXPECT_EQ(copy->centerX, 0);
    EXPECT_EQ(copy->recordSize, 16U);
}

TEST_F(ZoneShapeTest, FilesHoldVideoPixelsInSinglePrecisionTruncated) {
    struct Case {
        platform::Size display, video;
        int shown, stored, readBack;
    };
    const Case cases[]{
        {{1280, 720}, {1280, 720}, -5, -4, -3},
        {{1024, 600}, {1920, 1080}, 101, 189, 101},
        {{1280, 720}, {320, 180}, 101, 25, 100},
        {{1280, 720}, {320, 180}, kHighest, 536870912, kHighest},
        {{720, 720}, {1440, 720}, kLowest, kLowest, -1073741824},
        {{1280, 720}, {1280, 720}, 16777217, 16777216, 16777216},
    };
    for (const Case& c : cases) {
        zone::setZoneView({c.display, c.video});
        zone::ZoneShape shape = shapeOf({{c.shown, 0}});
        const std::string bytes = writtenAlone(shape);
        EXPECT_EQ(bytes, shapeBytes({{c.stored, 0}})) << c.shown;
        std::size_t consumed = 0;
        EXPECT_TRUE(shape.read(asBytes(bytes + "rest"), consumed));
        EXPECT_EQ(consumed, 16U);
        EXPECT_EQ(shape.points, (Points{{c.readBack, 0}}));
        EXPECT_FALSE(shape.read(asBytes(bytes.substr(1)), consumed));
        EXPECT_EQ(consumed, 0U);
        zone::setZoneView({c.display, {0, 1}}); // there is no scale
        EXPECT_EQ(writtenAlone(shape), "(failed)");
        EXPECT_FALSE(shape.read(asBytes(shapeBytes({{1, 2}, {3, 4}})), consumed));
        EXPECT_EQ(shape.points, (Points{{0, 0}, {0, 0}}));
        EXPECT_EQ(consumed, 24U);
    }
}

} // namespace
} // namespace zone_tests
