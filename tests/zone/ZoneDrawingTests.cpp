#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/zone/RecordingCanvas.h"
#include "tests/zone/ZoneFixture.h"

namespace zone_tests {
namespace {

/// Every character is 7 wide and 12 high.
class FixedFonts final : public platform::FontSet {
public:
    platform::FontHandle open(const platform::FontDescription&) override { return 0; }
    [[nodiscard]] int lineHeight(platform::FontHandle) const override { return 12; }
    [[nodiscard]] platform::Size measure(std::u16string_view text,
                                         platform::FontHandle) const override {
        return {7 * static_cast<int>(text.size()), 12};
    }
    [[nodiscard]] std::vector<int> caretPositions(std::u16string_view,
                                                  platform::FontHandle) const override {
        return {};
    }
};

/// A zone of one frame.
std::shared_ptr<zone::Zone> zoneOf(const Points& points, std::uint32_t active = 1) {
    auto zone = zone::Zone::create(1);
    const std::string body = zoneBody("Z", {shapeBytes(points, active)});
    EXPECT_TRUE(zone->read(asBytes(body), body.size(), 1, zone::Scale{}).complete);
    return zone;
}

/// The display pixel (0, 0) at (x, y), and the picture so many times as large.
Lines drawn(const zone::Zone& zone, int x, int y, int selected, zone::NumberFont font = {},
            int times = 1) {
    RecordingCanvas canvas;
    const auto place = [=](platform::Point p) {
        return platform::Point{x + times * p.x, y + times * p.y};
    };
    zone.draw(0, canvas, place, selected, font);
    return canvas.calls;
}

platform::Point centerOf(const zone::Zone& zone) {
    zone::ZoneEditing editing;
    EXPECT_EQ(editing.centerOf(0), platform::Point{}) << "before it is shown";
    editing.noteShown(zone, 0);
    return editing.centerOf(0);
}

using ZoneDrawingTest = ZoneTest;

TEST_F(ZoneDrawingTest, AnOutlineIsLinesThenItsCentreThenNumberedPoints) {
    const FixedFonts fonts;
    const Points points{{10, 20}, {111, 20}, {60, 101}};
    const auto zone = zoneOf(points);
    EXPECT_EQ(drawn(*zone, 100, 200, 1, {3, &fonts}),
              (Lines{"line 110 220 211 220 ff0000", "line 211 220 160 301 ffff00",
                     "line 160 301 110 220 ff0000", "handle 152 239 168 255 ffffff",
                     "handle 102 212 118 228 ffffff", "centred 1 106 214 114 226 3 0",
                     "handle 203 212 219 228 ffff00", "centred 2 207 214 215 226 3 0",
                     "handle 152 293 168 309 ffffff", "centred 3 156 295 164 307 3 0"}));
    EXPECT_EQ(centerOf(*zone), (platform::Point{60, 47})) << "in display pixels";
    EXPECT_EQ(drawn(*zone, 0, 0, 3)[3], "handle 52 39 68 55 ffff00");
    EXPECT_EQ(drawn(*zone, 5, 0, 3, {}, 2)[3], "handle 117 86 133 102 ffff00")
        << "handles do not grow";
    const Lines inactive = drawn(*zoneOf(points, 0), 0, 0, 2);
    EXPECT_EQ(inactive[0], "line 10 20 111 20 c00000");
    EXPECT_EQ(inactive[2], "line 60 101 10 20 c0c000") << "the closing line is the last point's";
}

TEST_F(ZoneDrawingTest, OneOrTwoPointsHaveNeitherClosingLineNorCentreHandle) {
    EXPECT_EQ(drawn(*zoneOf({}), 9, 9, -1), Lines{});
    const auto two = zoneOf({{10, 20}, {30, 40}});
    EXPECT_EQ(drawn(*two, 0, 0, 2), (Lines{"line 10 20 30 40 ff0000", "handle 2 12 18 28 ffffff",
                                           "centred 1 2 12 18 28 0 0", "handle 22 32 38 48 ffffff",
                                           "centred 2 22 32 38 48 0 0"}));
    EXPECT_EQ(centerOf(*two), (platform::Point{40, 60})) << "the sum";
    EXPECT_EQ(centerOf(*zoneOf({{1, -3}, {1, -3}, {1, 0}})).y, -1) << "toward zero";
}

TEST_F(ZoneDrawingTest, WhatADamagedFileMakesUpIsDrawnSoon) {
    constexpr int kHighest = 0x7FFFFFFF;
    EXPECT_EQ(centerOf(*zoneOf({{kHighest, -kHighest}, {kHighest, -kHighest}})),
              (platform::Point{kHighest, -kHighest - 1}));
    EXPECT_LT(drawn(*zoneOf(Points(1'000'000, {5, 5})), 0, 0, 2).size(), 50'000U);
}

TEST_F(ZoneDrawingTest, NothingIsDrawnOutsideTheAreaThatIsRepainted) {
    const FixedFonts fonts;
    const auto place = [](platform::Point p) { return platform::Point{3 * p.x - 7, 3 * p.y}; };
    Points many(20'000, {50, 50});
    many.front() = {-4, 9};
    many[9'999] = {200, 3};
    many.back() = {30, 300};
    for (const Points& points :
         {Points{{5, 6}}, {{5, 6}, {-90, 40}}, {{0, 0}, {9, 0}, {0, 9}}, many}) {
        RecordingCanvas canvas;
        zoneOf(points)->draw(0, canvas, place, -1, {3, &fonts});
        EXPECT_EQ(canvas.drawn.intersected(zone::drawnArea(points, place)), canvas.drawn);
    }
    EXPECT_TRUE(zone::drawnArea({}, place).isEmpty());
}

TEST_F(ZoneDrawingTest, AFrameThatIsNotThereIsReported) {
    RecordingCanvas canvas;
    zone::Zone::create(1)->draw(1, canvas, {}, 0, {});
    EXPECT_EQ(m_log.errors(), Lines{"..\\Zone.cpp:102 Frame index is invalid"});
}

} // namespace
} // namespace zone_tests
