#include <cstdint>
#include <ios>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "platform/raster/RasterCanvas.h"
#include "tests/support/gui/FakeGui.h"

using platform::Bitmap;
using platform::ClipScope;
using platform::Color;
using platform::Rect;
using platform::rgb;
using platform::raster::RasterCanvas;

namespace {

class RasterCanvasTest : public testing::Test {
protected:
    [[nodiscard]] int countOf(std::uint32_t pixel) const {
        int count = 0;
        for (int y = 0; y < m_bitmap.size().height; ++y) {
            for (int x = 0; x < m_bitmap.size().width; ++x) {
                count += m_bitmap.at(x, y) == pixel ? 1 : 0;
            }
        }
        return count;
    }

    Bitmap m_bitmap{{20, 20}};
    test::NoText m_text;
    RasterCanvas m_canvas{m_bitmap, m_text, {0, 0, 20, 20}};
};

constexpr Color kRed = rgb(255, 0, 0);
constexpr Color kBlue = rgb(0, 0, 255);

} // namespace

TEST_F(RasterCanvasTest, FillsExactlyTheRectangleInsideEveryClip) {
    const std::tuple<Rect, Rect, Rect, int> cases[] = {
        {{0, 0, 20, 20}, {0, 0, 20, 20}, {2, 3, 5, 7}, 12},
        {{0, 0, 20, 20}, {0, 0, 20, 20}, {-9, -9, 99, 99}, 400},
        {{4, 4, 10, 10}, {0, 0, 20, 20}, {0, 0, 20, 20}, 36},
        {{4, 4, 10, 10}, {8, 8, 20, 20}, {0, 0, 20, 20}, 4},
        {{0, 0, 5, 5}, {8, 8, 20, 20}, {0, 0, 20, 20}, 0},
        {{0, 0, 20, 20}, {0, 0, 20, 20}, {7, 7, 7, 9}, 0},
        {{0, 0, 20, 20}, {0, 0, 20, 20}, {9, 9, 3, 3}, 0},
    };
    for (const auto& [outerClip, innerClip, rect, pixels] : cases) {
        m_canvas.fillRect({0, 0, 20, 20}, kBlue);
        {
            const ClipScope outer(m_canvas, outerClip);
            const ClipScope inner(m_canvas, innerClip);
            m_canvas.fillRect(rect, kRed);
        }
        EXPECT_EQ(countOf(kRed), pixels);
        EXPECT_EQ(m_canvas.clip(), (Rect{0, 0, 20, 20}));
    }
    m_canvas.popClip(); // once too often
    m_canvas.popClip();
    EXPECT_EQ(m_canvas.clip(), (Rect{0, 0, 20, 20}));
}

TEST_F(RasterCanvasTest, BlendsAFillByItsAlpha) {
    const std::tuple<Color, Color, std::uint32_t> cases[] = {
        {0xFF000000, 0x80FFFFFF, 0xFF808080}, {0xFFFFFFFF, 0x80000000, 0xFF7F7F7F},
        {0xFF102030, 0x00FFFFFF, 0xFF102030}, {0xFF0000FF, 0x40FF0000, 0xFF4000BF},
        {0xFFFFFFFF, 0xFEFFFFFF, 0xFFFFFFFF},
    };
    for (const auto& [under, over, result] : cases) {
        m_canvas.fillRect({0, 0, 1, 1}, under);
        m_canvas.fillRect({0, 0, 1, 1}, over);
        EXPECT_EQ(m_bitmap.at(0, 0), result) << std::hex << under << " " << over;
    }
}

TEST_F(RasterCanvasTest, StretchesABitmapPartByPixelCentresAndBlendsIt) {
    Bitmap image({4, 2});
    for (int x = 0; x < 4; ++x) {
        image.row(0)[x] = rgb(static_cast<unsigned>(x), 0, 0);
        image.row(1)[x] = 0x80000080; // half transparent blue, premultiplied
    }
    m_canvas.fillRect({0, 0, 20, 20}, rgb(0, 255, 0));
    m_canvas.drawBitmap(image, {1, 0, 3, 2}, {10, 10, 14, 14});
    EXPECT_EQ(m_bitmap.at(10, 10), rgb(1, 0, 0));
    EXPECT_EQ(m_bitmap.at(11, 11), rgb(1, 0, 0));
    EXPECT_EQ(m_bitmap.at(12, 10), rgb(2, 0, 0));
    EXPECT_EQ(m_bitmap.at(13, 12), rgb(0, 127, 128));
    EXPECT_EQ(countOf(rgb(0, 255, 0)), 400 - 16);
}

TEST_F(RasterCanvasTest, LeavesThePixelsOfASourceOutsideTheBitmapAlone) {
    Bitmap image({2, 2});
    image.row(0)[0] = image.row(0)[1] = image.row(1)[0] = image.row(1)[1] = kRed;
    const std::pair<Rect, int> cases[] = {
        {{-1, -1, 1, 1}, 1}, {{1, 1, 3, 3}, 1}, {{5, 5, 7, 7}, 0}, {{2, 0, 1, 2}, 0}};
    for (const auto& [source, pixels] : cases) {
        m_canvas.fillRect({0, 0, 20, 20}, kBlue);
        m_canvas.drawBitmap(image, source, {0, 0, 2, 2});
        EXPECT_EQ(countOf(kRed), pixels) << source.left;
    }
    m_canvas.drawBitmap(Bitmap(), {0, 0, 1, 1}, {0, 0, 20, 20});
    EXPECT_EQ(countOf(kBlue), 400);
}

TEST_F(RasterCanvasTest, DrawsLinesAndEllipsesInsideTheClipOnly) {
    const ClipScope clip(m_canvas, {0, 0, 10, 20});
    m_canvas.drawLine({5, 1}, {15, 1}, kRed);
    EXPECT_EQ(countOf(kRed), 5);
    EXPECT_EQ(m_bitmap.at(9, 1), kRed);
    m_canvas.drawEllipse({2, 2, 18, 18}, kRed, kBlue);
    EXPECT_EQ(m_bitmap.at(7, 2), kRed);
    EXPECT_EQ(m_bitmap.at(6, 2), 0U);
    EXPECT_EQ(m_bitmap.at(9, 9), kBlue);
    EXPECT_EQ(m_bitmap.at(10, 9), 0U);
    m_canvas.drawEllipse({-40000, 0, 40000, 20}, kRed, kRed);
    EXPECT_EQ(m_bitmap.at(9, 9), kBlue);
}

TEST_F(RasterCanvasTest, ColorsMasksByTheirAlpha) {
    Bitmap mask({3, 2});
    mask.row(1)[1] = mask.row(1)[2] = 0xFFFFFFFF;
    m_canvas.drawMask(mask, {1, 0, 3, 2}, {4, 4, 6, 6}, kRed);
    EXPECT_EQ(countOf(kRed), 2);
    EXPECT_EQ(m_bitmap.at(4, 5), kRed);
    m_canvas.drawMask(mask, {1, 1, 3, 2}, {10, 10, 14, 14}, kBlue); // enlarged
    EXPECT_EQ(countOf(kBlue), 16);
    m_canvas.drawMask(mask, {2, 0, 4, 2}, {0, 0, 2, 2}, kBlue); // not all of it is in the mask
    EXPECT_EQ(countOf(kBlue), 16);
}
