#include <limits>

#include "tests/zone/ZoneFixture.h"
#include "zone/ZoneShape.h"
#include "zone/ZoneView.h"

namespace zone_tests {
namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

class ZoneShapeTest : public ZoneTest {
protected:
    static zone::ZoneShape shapeOf(const Points& points) {
        zone::ZoneShape shape;
        for (const platform::Point& point : points) {
            shape.insertPoint(-1, point.x, point.y);
        }
        return shape;
    }
};

TEST_F(ZoneShapeTest, APointIsClampedToTheManagersArea) {
    struct Case {
        int width, height, x, y;
        platform::Point stored;
    };
    const Case cases[]{
        {1280, 720, 5, 6, {5, 6}},
        {1280, 720, -5, 10000, {0, 719}},
        {1280, 720, 1280, -1, {1279, 0}},
        {1024, 600, 1279, 719, {1023, 599}},
        {0, 720, 5000, 5000, {5000, 719}},
        {0, 0, -1, -1, {0, 0}},
        {-3, -3, kHighest, 7, {kHighest, 7}},
        {1, 1, 5, 5, {0, 0}},
    };
    for (const Case& c : cases) {
        m_manager->videoWidth = c.width;
        m_manager->videoHeight = c.height;
        zone::ZoneShape shape = shapeOf({{1, 1}});
        shape.setPoint(0, c.x, c.y);
        EXPECT_EQ(shape.points[0], c.stored) << c.width << "x" << c.height;
    }
    zone::setCurrentZoneManager(nullptr);
    zone::ZoneShape shape = shapeOf({{1, 1}});
    shape.setPoint(0, -4, 9999);
    EXPECT_EQ(shape.points[0], (platform::Point{0, 9999}));
    EXPECT_EQ(newErrors(), Lines{});
}

TEST_F(ZoneShapeTest, AnyCoordinateOfADamagedFileCanBeDragged) {
    platform::Point delta;
    zone::ZoneShape far = shapeOf({{kHighest, kLowest}, {0, 0}, {1, 1}});
    EXPECT_TRUE(far.movePoint(3, kHighest, kLowest, delta));
}

TEST_F(ZoneShapeTest, ACopyHasTheFlagAndThePointsButNoCentre) {
    const auto shape = zone::ZoneShape::createEmpty();
    EXPECT_EQ(zone::ZoneShape::copyFrom(*shape)->recordSize, 8U);
    shape->insertPoint(-1, 1, 1);
    shape->active = false;
    shape->centerX = 4;
    const auto copy = zone::ZoneShape::copyFrom(*shape);
    EXPECT_EQ(copy->points, (Points{{1, 1}}));
    EXPECT_FALSE(copy->active);
    EXPECT_EQ(copy->centerX, 0);
}

TEST_F(ZoneShapeTest, AHandleBoxExcludesItsRightAndBottomEdges) {
    zone::ZoneShape shape = shapeOf({{100, 100}, {104, 104}, {400, 400}});
    shape.centerX = 300;
    shape.centerY = 300;
    struct Case {
        int x, y, handle;
    };
    const Case cases[]{{100, 100, 0}, {92, 92, 0},    {91, 92, -1},   {92, 91, -1},   {107, 107, 0},
                       {108, 107, 1}, {108, 108, 1},  {112, 104, -1}, {104, 112, -1}, {300, 300, 3},
                       {292, 307, 3}, {308, 300, -1}, {300, 308, -1}, {407, 392, 2}};
    for (const Case& c : cases) {
        EXPECT_EQ(shape.hitTest(c.x, c.y), c.handle) << c.x << ", " << c.y;
    }
    shape.centerX = 400;
    shape.centerY = 404;
    EXPECT_EQ(shape.hitTest(400, 404), 2) << "a point wins over the centre";
    zone::ZoneShape line = shapeOf({{100, 100}, {200, 200}});
    line.centerX = 300;
    line.centerY = 300;
    EXPECT_EQ(line.hitTest(300, 300), -1) << "two points have no centre handle";
    zone::ZoneShape far = shapeOf({{kHighest, kLowest}});
    EXPECT_EQ(far.hitTest(kHighest, kLowest), 0);
    EXPECT_EQ(far.hitTest(kLowest, kHighest), -1);
}

TEST_F(ZoneShapeTest, PointsAreScaledInSinglePrecisionAndTruncated) {
    struct Case {
        platform::Size display, video;
        int shown, stored, readBack;
    };
    const Case cases[]{
        {{1280, 720}, {1280, 720}, 7, 7, 7},
        {{1280, 720}, {1280, 720}, -5, -4, -3},
        {{1280, 720}, {1280, 720}, -1, 0, 0},
        {{1280, 720}, {1920, 1080}, 100, 150, 100},
        {{1024, 600}, {1920, 1080}, 101, 189, 101},
        {{1280, 720}, {320, 180}, 101, 25, 100},
        {{1280, 720}, {320, 180}, kHighest, 536870912, kHighest},
        {{720, 720}, {1440, 720}, kLowest, kLowest, -1073741824},
        {{720, 720}, {1440, 720}, kHighest, kHighest, 1073741824},
        {{1280, 720}, {1280, 720}, 16777217, 16777216, 16777216},
    };
    for (const Case& c : cases) {
        zone::setZoneView({c.display, c.video});
        core::File file;
        ASSERT_TRUE(file.open("shape.bin", "wb"));
        ASSERT_TRUE(shapeOf({{c.shown, 0}}).write(file));
        ASSERT_TRUE(file.close());
        const std::string bytes = support::readBytes("shape.bin");
        EXPECT_EQ(bytes, shapeBytes({{c.stored, 0}})) << c.shown;
        zone::ZoneShape shape;
        std::size_t consumed = 0;
        EXPECT_TRUE(shape.read(asBytes(bytes), consumed));
        EXPECT_EQ(consumed, 16U);
        EXPECT_EQ(shape.points[0].x, c.readBack) << c.shown;
        EXPECT_EQ(shape.recordSize, 16U);
    }
}

TEST_F(ZoneShapeTest, ARecordIsReadAsFarAsItFits) {
    const Points one{{3, 4}};
    struct Case {
        std::string bytes;
        bool good;
        std::size_t consumed;
        Points points;
    };
    const Case cases[]{
        {shapeBytes({}), true, 8, {}},
        {u32(0) + u32(1), true, 8, {}},          // never edited
        {u32(7) + u32(1) + u32(9), true, 8, {}}, // no room for its own header
        {shapeBytes(one) + "rest", true, 16, one},
        {u32(21) + u32(1) + shapeBytes({{3, 4}, {0, 0}}).substr(8), true, 21, one},
        {shapeBytes(one).substr(0, 15), false, 0, {}},
        {u32(8) + u32(1).substr(0, 3), false, 0, {}},
        {u32(0xFFFFFFFF) + u32(1) + std::string(64, 'x'), false, 0, {}},
        {"", false, 0, {}},
    };
    for (const Case& c : cases) {
        zone::ZoneShape shape;
        std::size_t consumed = 99;
        EXPECT_EQ(shape.read(asBytes(c.bytes), consumed), c.good) << c.bytes.size();
        EXPECT_EQ(consumed, c.consumed);
        EXPECT_EQ(shape.points, c.points);
    }
    std::size_t consumed = 0;
    for (const std::uint32_t word : {0U, 1U, 2U, 0x101U}) {
        zone::ZoneShape shape;
        EXPECT_TRUE(shape.read(asBytes(shapeBytes({}, word)), consumed));
        EXPECT_EQ(shape.active, word == 1) << word;
    }
}

TEST_F(ZoneShapeTest, WithoutAScaleNothingIsReadOrWritten) {
    const auto failsBothWays = [&] {
        zone::ZoneShape shape;
        std::size_t consumed = 0;
        EXPECT_FALSE(shape.read(asBytes(shapeBytes({{3, 4}, {5, 6}})), consumed));
        EXPECT_EQ(shape.points, (Points{{0, 0}, {0, 0}}));
        EXPECT_EQ(consumed, 24U);
        core::File file;
        ASSERT_TRUE(file.open("shape.bin", "wb"));
        EXPECT_FALSE(shapeOf({{1, 2}}).write(file));
        ASSERT_TRUE(file.close());
        EXPECT_EQ(support::readBytes("shape.bin"), "");
    };
    zone::clearZoneView();
    failsBothWays();
    for (const platform::Size size : {platform::Size{0, 720}, {1280, 0}, {-1, 720}}) {
        zone::setZoneView({size, {1280, 720}});
        failsBothWays();
        zone::setZoneView({{1280, 720}, size});
        failsBothWays();
    }
}

} // namespace
} // namespace zone_tests
