#include <limits>

#include "platform/raster/RasterCanvas.h"
#include "tests/zone/RecordingCanvas.h"
#include "tests/zone/ZoneFixture.h"
#include "zone/ZoneView.h"

namespace zone_tests {
namespace {

using platform::Color;
using platform::rgb;

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

/// Numbers are left out, so that only geometry shows.
class NoText final : public platform::raster::TextPainter {
    void drawText(platform::raster::PixelView, const platform::Rect&, std::u16string_view,
                  const platform::Rect&, platform::FontHandle, Color,
                  platform::TextAlign) override {}
};

class ZoneDrawingTest : public ZoneTest {
protected:
    ZoneDrawingTest() { zone::setZoneView({{1280, 720}, {1280, 720}, 3, &m_fonts}); }

    static Lines drawn(zone::ZoneShape& shape, int x, int y, int selected) {
        RecordingCanvas canvas;
        shape.draw(canvas, x, y, selected);
        return canvas.calls;
    }

    FixedFonts m_fonts;
};

TEST_F(ZoneDrawingTest, AnOutlineIsLinesThenItsCentreThenNumberedPoints) {
    zone::ZoneShape shape;
    shape.points = {{10, 20}, {111, 20}, {60, 101}};
    EXPECT_EQ(
        drawn(shape, 100, 200, 1),
        (Lines{"line 110 220 211 220 ff0000", "line 211 220 160 301 ffff00",
               "line 160 301 110 220 ff0000", "ellipse 152 239 168 255 fa0000 ffffff",
               "ellipse 102 212 118 228 fa0000 ffffff", "text 1 106 214 114 226 3 000000 center",
               "ellipse 203 212 219 228 fa0000 ffff00", "text 2 207 214 215 226 3 000000 center",
               "ellipse 152 293 168 309 fa0000 ffffff", "text 3 156 295 164 307 3 000000 center"}));
    EXPECT_EQ(shape.centerX, 60) << "without the origin";
    EXPECT_EQ(shape.centerY, 47);
    shape.active = false;
    const Lines last = drawn(shape, 0, 0, 2);
    EXPECT_EQ(last[0], "line 10 20 111 20 c00000");
    EXPECT_EQ(last[2], "line 60 101 10 20 c0c000") << "the closing line starts at the last point";
    EXPECT_EQ(drawn(shape, 0, 0, 3)[3], "ellipse 52 39 68 55 fa0000 ffff00");
    shape.points = {{-3, -4}, {-3, -4}, {-1, -1}};
    drawn(shape, 0, 0, -1);
    EXPECT_EQ(shape.centerX, -2) << "halves go toward zero";
    EXPECT_EQ(shape.centerY, -3);
}

TEST_F(ZoneDrawingTest, OneOrTwoPointsHaveNoClosingLineAndKeepTheirSumAsCentre) {
    zone::ZoneShape shape;
    shape.centerX = 5;
    EXPECT_EQ(drawn(shape, 9, 9, -1), Lines{});
    EXPECT_EQ(shape.centerX, 0);
    shape.points = {{10, 20}};
    EXPECT_EQ(drawn(shape, 0, 0, 0),
              (Lines{"ellipse 2 12 18 28 fa0000 ffff00", "text 1 6 14 14 26 3 000000 center"}));
    shape.points.push_back({30, 40});
    EXPECT_EQ(drawn(shape, 0, 0, 0)[0], "line 10 20 30 40 ffff00");
    EXPECT_EQ(shape.centerX, 40);
    EXPECT_EQ(shape.centerY, 60);
}

TEST_F(ZoneDrawingTest, AnyCoordinatesAndAnyCountCanBeDrawn) {
    constexpr int kLowest = std::numeric_limits<int>::min();
    constexpr int kHighest = std::numeric_limits<int>::max();
    zone::ZoneShape shape;
    shape.points = {{kHighest, kLowest}, {kHighest, kLowest}};
    EXPECT_FALSE(drawn(shape, kHighest, kLowest, 2).empty());
    EXPECT_EQ(shape.centerX, kHighest);
    EXPECT_EQ(shape.centerY, kLowest);
    shape.points.assign(1'000'000, {5, 5});
    EXPECT_LT(drawn(shape, 0, 0, 2).size(), 50'000U);
    EXPECT_EQ(shape.centerX, 5);
}

TEST_F(ZoneDrawingTest, TheManagerDrawsSilentlyAndOnlyWhatIsThere) {
    m_manager->addZone(makeZone({{{10, 10}}}));
    RecordingCanvas canvas;
    const int frames[]{-1, 1, 5};
    for (const int frame : frames) {
        m_manager->draw(0, frame, canvas, 0, 0);
    }
    for (const int zone : {-1, 1}) {
        m_manager->draw(zone, 0, canvas, 0, 0);
    }
    EXPECT_TRUE(canvas.calls.empty());
    m_manager->draw(0, 0, canvas, 1, 1);
    EXPECT_EQ(canvas.calls.size(), 2U);
    EXPECT_EQ(newErrors(), Lines{});
    zone::Zone& zone = *m_manager->zone(0);
    EXPECT_EQ(zone.shape(0)->centerX, 10) << "without the origin";
    ASSERT_TRUE(zone.read(asBytes(zoneBody("Z", {shapeBytes({{10, 10}})})), 1));
    EXPECT_EQ(zone.shape(0)->centerX, 0) << "what is read has not been drawn";
}

TEST_F(ZoneDrawingTest, PixelsShowTheColoursInTheirPlaces) {
    zone::ZoneShape shape;
    shape.points = {{20, 20}, {80, 20}, {80, 80}, {20, 80}};
    platform::Bitmap picture({120, 120});
    NoText noText;
    platform::raster::RasterCanvas canvas(picture, noText, {0, 0, 120, 120});
    canvas.fillRect({0, 0, 120, 120}, rgb(0, 0, 0));
    shape.draw(canvas, 10, 5, 0);
    struct Case {
        int x, y;
        Color color;
    };
    const Case cases[]{
        {60, 25, rgb(255, 255, 0)}, {90, 55, rgb(255, 0, 0)},     {60, 85, rgb(255, 0, 0)},
        {30, 55, rgb(255, 0, 0)},   {60, 24, rgb(0, 0, 0)},       {60, 26, rgb(0, 0, 0)},
        {30, 25, rgb(255, 255, 0)}, {90, 25, rgb(255, 255, 255)}, {60, 55, rgb(255, 255, 255)},
        {52, 55, rgb(250, 0, 0)},   {67, 55, rgb(250, 0, 0)},     {68, 55, rgb(0, 0, 0)},
        {51, 55, rgb(0, 0, 0)},     {60, 47, rgb(250, 0, 0)},     {60, 62, rgb(250, 0, 0)},
        {60, 63, rgb(0, 0, 0)},     {22, 25, rgb(250, 0, 0)},     {21, 25, rgb(0, 0, 0)},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(picture.at(c.x, c.y), c.color) << c.x << ", " << c.y;
    }
}

} // namespace
} // namespace zone_tests
