#include <algorithm>
#include <ios>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using platform::FontHandle;
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
                           TextAlign align, const Rect& clip = {0, 0, 200, 100}) {
    test::TestWindow window;
    window.paint = [&](platform::Canvas& canvas) {
        canvas.fillRect({0, 0, 200, 100}, 0xFFFFFFFF);
        const platform::ClipScope scope(canvas, clip);
        canvas.drawText(text, box, font, 0xFF000000, align);
    };
    return window.native().picture().snapshot();
}

/// How many pixels' worth of `color` a text in it leaves on `ground`.
double inkOf(platform::Color color, platform::Color ground) {
    test::TestWindow window;
    window.paint = [&](platform::Canvas& canvas) {
        canvas.fillRect({0, 0, 200, 100}, ground);
        canvas.drawText(u"Kept until you press Save.", {0, 0, 200, 100}, 0, color, TextAlign::left);
    };
    const platform::Bitmap picture = window.native().picture().snapshot();
    const auto greenOf = [](platform::Color c) {
        return static_cast<double>(platform::greenOf(c));
    };
    double ink = 0;
    for (int y = 0; y < picture.size().height; ++y) {
        for (int x = 0; x < picture.size().width; ++x) {
            ink +=
                (greenOf(picture.at(x, y)) - greenOf(ground)) / (greenOf(color) - greenOf(ground));
        }
    }
    return ink;
}

class Fonts : public testing::Test {
protected:
    platform::FontSet& m_fonts = test::gui().fonts();
};

} // namespace

TEST_F(Fonts, GiveEqualDescriptionsOneHandle) {
    const FontHandle plain = m_fonts.open({"", 15, false, false});
    EXPECT_EQ(m_fonts.open({"", 15, false, false}), plain);
    EXPECT_NE(m_fonts.open({"", 15, true, false}), plain);
    EXPECT_NE(m_fonts.open({"", 16, false, false}), plain);
    EXPECT_EQ(m_fonts.open({}), 0);
}

TEST_F(Fonts, TakeUnknownHandlesAndWildSizesForHarmlessOnes) {
    EXPECT_EQ(m_fonts.lineHeight(-1), m_fonts.lineHeight(0));
    EXPECT_EQ(m_fonts.lineHeight(99999), m_fonts.lineHeight(0));
    EXPECT_GT(m_fonts.lineHeight(m_fonts.open({"", -5, false, false})), 0);
    EXPECT_LT(m_fonts.lineHeight(m_fonts.open({"", 2000000000, false, false})), 1000);
}

TEST_F(Fonts, GrowWithSizeWeightAndText) {
    const FontHandle small = m_fonts.open({"", 12, false, false});
    const FontHandle large = m_fonts.open({"", 24, false, false});
    const FontHandle bold = m_fonts.open({"", 24, true, false});
    EXPECT_GT(m_fonts.lineHeight(large), m_fonts.lineHeight(small));
    EXPECT_GT(m_fonts.measure(u"Scene", bold).width, m_fonts.measure(u"Scene", large).width);
    EXPECT_GT(m_fonts.measure(u"Scenes", large).width, m_fonts.measure(u"Scene", large).width);
    EXPECT_EQ(m_fonts.measure(u"", large), (platform::Size{0, m_fonts.lineHeight(large)}));
}

TEST_F(Fonts, PutCaretsBetweenCharactersAndNeverInsideOne) {
    const std::u16string texts[] = {
        u"",       u"Zone 12",  u"\u00e9\u00df\u4e2d", u"a\U0001F600b",
        u"\xD83D", u"x\xDE00y", u"\xFEFFstart",        u"\xD83D\xD83D\xDE00"};
    for (const auto& text : texts) {
        const auto positions = m_fonts.caretPositions(text, 0);
        ASSERT_EQ(positions.size(), text.size() + 1);
        EXPECT_EQ(positions.front(), 0);
        EXPECT_TRUE(std::is_sorted(positions.begin(), positions.end()));
        EXPECT_NEAR(positions.back(), m_fonts.measure(text, 0).width, 1);
    }
    const auto pair = m_fonts.caretPositions(u"a\U0001F600b", 0);
    EXPECT_EQ(pair[2], pair[1]);
    EXPECT_GT(pair[3], pair[2]);
}

TEST_F(Fonts, AlignTextInsideItsBoxAndCutIt) {
    const FontHandle font = m_fonts.open({"", 20, true, false});
    const int width = m_fonts.measure(u"HHH", font).width;
    const Rect box{20, 20, 180, 60};
    const std::pair<TextAlign, int> cases[] = {{TextAlign::left, 20},
                                               {TextAlign::center, 20 + (160 - width) / 2},
                                               {TextAlign::right, 180 - width}};
    for (const auto& [align, left] : cases) {
        const auto [first, end] = inkColumns(pictureOf(u"HHH", box, font, align));
        EXPECT_NEAR(first, left, 4);
        EXPECT_NEAR(end, left + width, 4);
    }
    const auto [first, end] = inkColumns(pictureOf(u"HHHHHHHHHHHHHHHHHHHH", {50, 20, 90, 60}, font,
                                                   TextAlign::center, {60, 0, 200, 100}));
    EXPECT_EQ(first, 60);
    EXPECT_EQ(end, 90);
}

TEST_F(Fonts, WeighTheSameInEveryColourOnEveryGround) {
    const double ink = inkOf(0xFF000000, 0xFFFFFFFF);
    EXPECT_GT(ink, 100);
    const std::pair<platform::Color, platform::Color> pairs[] = {
        {0xFFFFFFFF, 0xFF000000}, {0xFFFFFFFF, 0xFF1C5FB0}, {0xFF5B6B80, 0xFFF2F4F8}};
    for (const auto& [color, ground] : pairs) {
        EXPECT_NEAR(inkOf(color, ground) / ink, 1, 0.02) << std::hex << color << " on " << ground;
    }
    EXPECT_NEAR(inkOf(0x80000000, 0xFFFFFFFF) / ink, 0.5, 0.02);
}
