// GDI and our own scaler choose the same pixels, so that a frame looks the same on every system.
#include <string>

#include <gtest/gtest.h>

#include "platform/Bitmap.h"
#include "platform/raster/FrameScaler.h"
#include "platform/win32/Win32BackBuffer.h"
#include "platform/win32/Win32Canvas.h"
#include "platform/win32/Win32FontSet.h"
#include "platform/win32/Win32FrameBuffer.h"

using platform::Rect;
using platform::Size;

TEST(Stretch, ChoosesThePixelsThatOurScalerChooses) {
    const struct {
        Size source;
        Size target;
    } cases[] = {
        {{8, 8}, {4, 4}},           {{1280, 720}, {1024, 600}}, {{1920, 1088}, {1280, 720}},
        {{640, 480}, {1280, 720}},  {{352, 288}, {1280, 720}},  {{100, 37}, {37, 100}},
        {{37, 100}, {100, 37}},     {{7, 9}, {3, 2}},           {{4, 4}, {6, 6}},
        {{1000, 999}, {999, 1000}}, {{5, 5}, {5, 5}},
    };
    const platform::win32::Win32FontSet fonts;
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.source.width) + "x" + std::to_string(c.source.height));
        const auto frame = platform::win32::makeFrameBuffer(nullptr, c.source).buffer;
        ASSERT_NE(frame, nullptr);
        for (int y = 0; y < c.source.height; ++y) { // each pixel holds its own place
            for (int x = 0; x < c.source.width; ++x) {
                const int number = y << 12 | x;
                std::uint8_t* pixel = frame->bits() + y * frame->rowBytes() + 3 * x;
                for (int channel = 0; channel < 3; ++channel) {
                    pixel[channel] = static_cast<std::uint8_t>(number >> (8 * channel));
                }
            }
        }
        const Rect all = Rect::at(0, 0, c.target.width, c.target.height);
        platform::Bitmap expected(c.target);
        platform::raster::scaleFrame(*frame, expected, all, all);

        platform::win32::Win32BackBuffer back;
        ASSERT_TRUE(back.resize(c.target));
        platform::win32::Win32TextPainter text(back.context(), fonts);
        platform::win32::Win32Canvas(back, text, all).drawFrame(*frame, all);
        int different = 0;
        for (int y = 0; y < c.target.height; ++y) {
            for (int x = 0; x < c.target.width; ++x) {
                different += (back.pixels().row(y)[x] | 0xFF000000U) != expected.at(x, y) ? 1 : 0;
            }
        }
        EXPECT_EQ(different, 0);
    }
}
