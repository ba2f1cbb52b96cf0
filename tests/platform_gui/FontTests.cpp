#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using platform::FontHandle;
using platform::FontSet;
using platform::Rect;
using platform::TextAlign;

namespace {

/// Columns of ink in a picture of white ground: first and one past the last; equal without ink.
std::pair<int, int> inkColumns(const platform::Bitmap& picture) {
    int first = picture.size().width;
    int end = 0;
    for (int y = 0; y < picture.size().height; ++y) {
        for (int x = 0; x < picture.size().width; ++x) {
            if (picture.at(x, y) != 0xFFFFFFFF) {
                first = std::min(first, x);
                end = std::max(end, x + 1);
            }
        }
    }
    return {std::min(first, end), end};
}

platform::Bitmap pictureOf(std::u16string_view text, const Rect& box, FontHandle font,
                           TextAlign align) {
    test::TestWindow window;
    window.paint = [&](platform::Canvas& canvas) {
        canvas.fillRect({0, 0, 200, 100}, 0xFFFFFFFF);
        canvas.drawText(text, box, font, 0xFF000000, align);
    };
    return window.native().snapshot();
}

} // namespace

TEST(FontSet, GivesEqualDescriptionsOneHandle) {
    FontSet& fonts = test::gui().fonts();
    const FontHandle plain = fonts.open({"", 15, false, false});
    EXPECT_EQ(fonts.open({"", 15, false, false}), plain);
    EXPECT_NE(fonts.open({"", 15, true, false}), plain);
    EXPECT_NE(fonts.open({"", 16, false, false}), plain);
    EXPECT_EQ(fonts.open({}), 0);
}

TEST(FontSet, TakesUnknownHandlesAndWildSizesForHarmlessOnes) {
    FontSet& fonts = test::gui().fonts();
    EXPECT_EQ(fonts.lineHeight(-1), fonts.lineHeight(0));
    EXPECT_EQ(fonts.lineHeight(99999), fonts.lineHeight(0));
    EXPECT_GT(fonts.lineHeight(fonts.open({"", -5, false, false})), 0);
    EXPECT_LT(fonts.lineHeight(fonts.open({"", 2000000000, false, false})), 1000);
}

TEST(FontSet, GrowsWithSizeWeightAndText) {
    FontSet& fonts = test::gui().fonts();
    const FontHandle small = fonts.open({"", 12, false, false});
    const FontHandle large = fonts.open({"", 24, false, false});
    const FontHandle bold = fonts.open({"", 24, true, false});
    EXPECT_GT(fonts.lineHeight(large), fonts.lineHeight(small));
    EXPECT_GT(fonts.measure(u"Scene", bold).width, fonts.measure(u"Scene", large).width);
    EXPECT_GT(fonts.measure(u"Scenes", large).width, fonts.measure(u"Scene", large).width);
    EXPECT_EQ(fonts.measure(u"", large), (platform::Size{0, fonts.lineHeight(large)}));
}

TEST(FontSet, PutsCaretsBetweenCharactersAndNeverInsideOne) {
    FontSet& fonts = test::gui().fonts();
    const std::u16string texts[] = {
        u"",       u"Zone 12",  u"\u00e9\u00df\u4e2d", u"a\U0001F600b",
        u"\xD83D", u"x\xDE00y", u"\xFEFFstart",        u"\xD83D\xD83D\xDE00"};
    for (const auto& text : texts) {
        const auto positions = fonts.caretPositions(text, 0);
        ASSERT_EQ(positions.size(), text.size() + 1);
        EXPECT_EQ(positions.front(), 0);
        EXPECT_TRUE(std::is_sorted(positions.begin(), positions.end()));
        EXPECT_NEAR(positions.back(), fonts.measure(text, 0).width, 1);
    }
    const auto pair = fonts.caretPositions(u"a\U0001F600b", 0);
    EXPECT_EQ(pair[2], pair[1]);
    EXPECT_GT(pair[3], pair[2]);
}

TEST(DrawText, AlignsInsideItsBoxAndIsCutToIt) {
    FontSet& fonts = test::gui().fonts();
    const FontHandle font = fonts.open({"", 20, true, false});
    const int width = fonts.measure(u"HHH", font).width;
    const Rect box{20, 20, 180, 60};
    const struct {
        TextAlign align;
        int left;
    } cases[] = {{TextAlign::left, 20},
                 {TextAlign::center, 20 + (160 - width) / 2},
                 {TextAlign::right, 180 - width}};
    for (const auto& c : cases) {
        const auto [first, end] = inkColumns(pictureOf(u"HHH", box, font, c.align));
        EXPECT_NEAR(first, c.left, 4);
        EXPECT_NEAR(end, c.left + width, 4);
    }
    const auto [first, end] =
        inkColumns(pictureOf(u"HHHHHHHHHHHHHHHHHHHH", {50, 20, 90, 60}, font, TextAlign::center));
    EXPECT_EQ(first, 50);
    EXPECT_EQ(end, 90);
}

TEST(DrawText, DrawsNothingForNoTextAndOutsideTheWindow) {
    EXPECT_EQ(inkColumns(pictureOf(u"", {0, 0, 200, 100}, 0, TextAlign::left)).second, 0);
    EXPECT_EQ(inkColumns(pictureOf(u"H", {300, 0, 400, 100}, 0, TextAlign::left)).second, 0);
    EXPECT_EQ(inkColumns(pictureOf(u"H", {50, 50, 40, 40}, 0, TextAlign::left)).second, 0);
}
