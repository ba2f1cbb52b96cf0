// The colours of every mode against their definition, for every value that samples can take.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "src/TheoraUtil/ColorConvert.h"
#include "src/TheoraVideoFrame.h"
#include "tests/src/ReferenceDecoder.h"

namespace {

using theora::ColorPath;
using theora::TheoraOutputMode;
using Samples = std::vector<std::uint8_t>;

/// A picture whose samples all differ from their neighbours.
class Planes {
public:
    Planes(int width, int height, int shiftX, int shiftY, bool bottomUp = false) {
        picture.chromaShiftX = shiftX;
        picture.chromaShiftY = shiftY;
        for (std::size_t i = 0; i < 3; ++i) {
            const int columns = i == 0 ? width : (width + (1 << shiftX) - 1) >> shiftX;
            const int rows = i == 0 ? height : (height + (1 << shiftY) - 1) >> shiftY;
            for (int at = 0; at < columns * rows; ++at) {
                samples[i].push_back(
                    static_cast<std::uint8_t>(at * (37 + 16 * static_cast<int>(i)) + at / 7));
            }
            const std::uint8_t* first = samples[i].data();
            picture.planes[i] = {bottomUp ? first + (rows - 1) * columns : first,
                                 bottomUp ? -columns : columns, columns, rows};
        }
    }
    [[nodiscard]] int sample(std::size_t plane, int x, int y) const {
        const theora::TheoraPlane& from = picture.planes[plane];
        return from.data[y * from.rowBytes + x];
    }

    Samples samples[3];
    theora::TheoraPicture picture;
};

TEST(ColorConvert, EveryTripleOfSamplesHasTheDefinedColour) {
    // One row holds every u for one y and v; 4:4:4, so that each pixel has its own.
    Planes planes(256, 256, 0, 0);
    for (std::size_t at = 0; at < planes.samples[1].size(); ++at) {
        planes.samples[1][at] = static_cast<std::uint8_t>(at % 256);
        planes.samples[2][at] = static_cast<std::uint8_t>(at / 256);
    }
    Samples out(planes.samples[0].size() * 3);
    Samples expected;
    for (int luma = 0; luma < 256; ++luma) {
        std::fill(planes.samples[0].begin(), planes.samples[0].end(),
                  static_cast<std::uint8_t>(luma));
        expected.clear();
        for (int v = 0; v < 256; ++v) {
            const std::uint8_t red = reference::red(luma, v);
            for (int u = 0; u < 256; ++u) {
                expected.insert(expected.end(),
                                {red, reference::green(luma, u, v), reference::blue(luma, u)});
            }
        }
        for (const ColorPath path : {ColorPath::fastest, ColorPath::portable}) {
            theora::convertPicture(planes.picture, TheoraOutputMode::TH_RGB, out.data(), 256, 256,
                                   path);
            ASSERT_TRUE(out == expected) << "luma " << luma;
        }
    }
}

/// The bytes of a pixel in each mode.
constexpr std::string_view kModes[] = {
    "",  "RGB", "RGBA", "RGBX", "ARGB", "XRGB", "BGR", "BGRA", "BGRX", "ABGR", "XBGR",
    "Y", "YYY", "YYYA", "YYYX", "AYYY", "XYYY", "YUV", "YUVA", "YUVX", "AYUV", "XYUV"};

std::uint8_t partOf(char part, const Planes& planes, int x, int y, int width) {
    const int luma = planes.sample(0, x, y);
    const int chromaX = x >> planes.picture.chromaShiftX;
    const int chromaY = y >> planes.picture.chromaShiftY;
    const int u = planes.sample(1, chromaX, chromaY);
    const int v = planes.sample(2, chromaX, chromaY);
    switch (part) {
    case 'R':
        return reference::red(luma, v);
    case 'G':
        return reference::green(luma, u, v);
    case 'B':
        return reference::blue(luma, u);
    case 'A': {
        const int alpha = planes.sample(0, x + width, y);
        return static_cast<std::uint8_t>(alpha < 32 ? 0 : alpha >= 225 ? 255 : alpha);
    }
    case 'X':
        return 255;
    default:
        return static_cast<std::uint8_t>(part == 'Y' ? luma : part == 'U' ? u : v);
    }
}

void expectMode(int mode, int width, int shiftX, int shiftY) {
    constexpr int kHeight = 5;
    const std::string_view parts = kModes[mode];
    const auto output = static_cast<TheoraOutputMode>(mode);
    const bool alpha = parts.find('A') != std::string_view::npos;
    ASSERT_EQ(theora::bytesPerPixel(output), static_cast<int>(parts.size()));
    ASSERT_EQ(theora::hasAlpha(output), alpha);
    const bool bottomUp = mode % 2 == 0;
    const Planes planes(alpha ? width * 2 : width, kHeight, shiftX, shiftY, bottomUp);
    Samples expected;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < width; ++x) {
            for (const char part : parts) {
                expected.push_back(partOf(part, planes, x, y, width));
            }
        }
    }
    expected.insert(expected.end(), 64, 7); // nothing is written past the end
    for (const ColorPath path : {ColorPath::fastest, ColorPath::portable}) {
        Samples out(expected.size(), 7);
        theora::convertPicture(planes.picture, output, out.data(), width, kHeight, path);
        ASSERT_EQ(out, expected) << parts << " width " << width << " shift " << shiftX << shiftY;
    }
}

TEST(ColorConvert, EveryModeOrdersItsBytesForEveryChromaFormatAndSize) {
    for (int mode = 1; mode < theora::kOutputModeCount; ++mode) {
        for (const int width : {1, 2, 15, 16, 31, 32, 48, 64, 321, 642}) {
            expectMode(mode, width, 1, 1);
            expectMode(mode, width, 1, 0);
            expectMode(mode, width, 0, 0);
        }
    }
}

TEST(VideoFrame, RowsOfAFinishedPictureArePackedWhateverTheStride) {
    theora::TheoraVideoFrame frame({TheoraOutputMode::TH_RGB, 20, 3, 32});
    Samples expected(32U * 3 * 3, 0xFF);
    EXPECT_EQ(Samples(frame.getBuffer(), frame.getBuffer() + frame.getBufferSize()), expected);
    Samples pixels(70U * 3);
    std::iota(pixels.begin(), pixels.end(), std::uint8_t{0});
    frame.copyConverted(pixels.data(), 70);
    for (std::ptrdiff_t row = 0; row < 3; ++row) {
        std::copy_n(pixels.begin() + row * 70, 60, expected.begin() + row * 60);
    }
    EXPECT_EQ(Samples(frame.getBuffer(), frame.getBuffer() + frame.getBufferSize()), expected);
}

TEST(VideoFrame, APictureSmallerThanTheFrameLeavesTheRest) {
    const Planes planes(6, 3, 1, 1);
    theora::TheoraVideoFrame frame({TheoraOutputMode::TH_RGBA, 8, 5, 8});
    frame.decode(planes.picture);
    EXPECT_EQ(frame.getBuffer()[2 * 32 + 5 * 4], partOf('R', planes, 5, 2, 6));
    EXPECT_EQ(frame.getBuffer()[6 * 4], 0xFF);
    EXPECT_EQ(frame.getBuffer()[3 * 32], 0xFF);
}

} // namespace
