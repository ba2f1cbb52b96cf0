#include "tests/zone/RecordingCanvas.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/ZoneView.h"

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

Lines drawn(zone::ZoneShape& shape, int x, int y, int selected) {
    RecordingCanvas canvas;
    shape.draw(canvas, x, y, selected);
    return canvas.calls;
}

using ZoneDrawingTest = ZoneTest;

TEST_F(ZoneDrawingTest, AnOutlineIsLinesThenItsCentreThenNumberedPoints) {
    const FixedFonts fonts;
    zone::setZoneView({{1280, 720}, {1280, 720}, 3, &fonts});
    zone::ZoneShape shape;
    shape.points = {{10, 20}, {111, 20}, {60, 101}};
    EXPECT_EQ(drawn(shape, 100, 200, 1),
              (Lines{"line 110 220 211 220 ff0000", "line 211 220 160 301 ffff00",
                     "line 160 301 110 220 ff0000", "handle 152 239 168 255 ffffff",
                     "handle 102 212 118 228 ffffff", "centred 1 106 214 114 226 3 0",
                     "handle 203 212 219 228 ffff00", "centred 2 207 214 215 226 3 0",
                     "handle 152 293 168 309 ffffff", "centred 3 156 295 164 307 3 0"}));
    EXPECT_EQ((platform::Point{shape.centerX, shape.centerY}), (platform::Point{60, 47}))
        << "without the origin";
    shape.active = false;
    const Lines last = drawn(shape, 0, 0, 2);
    EXPECT_EQ(last[0], "line 10 20 111 20 c00000");
    EXPECT_EQ(last[2], "line 60 101 10 20 c0c000") << "the closing line starts at the last point";
    EXPECT_EQ(drawn(shape, 0, 0, 3)[3], "handle 52 39 68 55 ffff00");
}

TEST_F(ZoneDrawingTest, OneOrTwoPointsHaveNeitherClosingLineNorCentreHandle) {
    zone::ZoneShape shape;
    EXPECT_EQ(drawn(shape, 9, 9, -1), Lines{});
    shape.points = {{10, 20}, {30, 40}};
    EXPECT_EQ(drawn(shape, 0, 0, 2), (Lines{"line 10 20 30 40 ff0000", "handle 2 12 18 28 ffffff",
                                            "centred 1 2 12 18 28 0 0", "handle 22 32 38 48 ffffff",
                                            "centred 2 22 32 38 48 0 0"}));
    EXPECT_EQ(shape.centerY, 60) << "the sum";
    shape.points = {{0, -4}, {0, -4}, {0, -1}};
    (void)drawn(shape, 0, 0, -1);
    EXPECT_EQ(shape.centerY, -3) << "toward zero";
}

TEST_F(ZoneDrawingTest, WhatADamagedFileMakesUpIsDrawnNearTheCanvasAndSoon) {
    constexpr int kHighest = 0x7FFFFFFF;
    zone::ZoneShape shape;
    shape.points = {{kHighest, -kHighest}};
    EXPECT_EQ(drawn(shape, kHighest, -kHighest, 2)[0],
              "handle 134217720 -134217736 134217736 -134217720 ffffff");
    EXPECT_EQ(shape.centerY, -kHighest);
    shape.points.assign(1'000'000, {5, 5});
    EXPECT_LT(drawn(shape, 0, 0, 2).size(), 50'000U);
}

TEST_F(ZoneDrawingTest, AFrameThatIsNotThereIsReportedByTheZoneAlone) {
    RecordingCanvas canvas;
    m_manager->addZone(nullptr);
    m_manager->addZone(zone::Zone::create(1));
    m_manager->draw(0, 1, canvas, 0, 0);
    m_manager->zone(0)->draw(1, canvas, 0, 0);
    EXPECT_EQ(m_log.errors(), Lines{"..\\Zone.cpp:102 Frame index is invalid"});
}

} // namespace
} // namespace zone_tests
