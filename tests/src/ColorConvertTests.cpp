// The colours of every mode against their definition, for every value that samples can take.
#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "src/TheoraUtil/ColorConvert.h"
#include "src/TheoraVideoFrame.h"

namespace {

using theora::ColorPath;
using theora::TheoraOutputMode;
using theora::TheoraPicture;
using Samples = std::vector<std::uint8_t>;

int table(int sample, int zero, double factor) {
    return static_cast<int>(std::trunc((sample - zero) * factor));
}
std::uint8_t colorOf(int sum) {
    return static_cast<std::uint8_t>(std::clamp(sum >> 13, 0, 255));
}
std::uint8_t red(int y, int v) {
    return colorOf(table(y, 16, 9535.988) + table(v, 128, 13074.932));
}
std::uint8_t green(int y, int u, int v) {
    return colorOf(table(y, 16, 9535.988) - (table(u, 128, 3203.572) + table(v, 128, 6660.596)));
}
std::uint8_t blue(int y, int u) {
    return colorOf(table(y, 16, 9535.988) + table(u, 128, 16531.956));
}

struct Planes {
    Planes(int width, int height, int shiftX, int shiftY)
        : chromaWidth((width + (1 << shiftX) - 1) >> shiftX),
          chromaHeight((height + (1 << shiftY) - 1) >> shiftY),
          y(static_cast<std::size_t>(width * height)),
          u(static_cast<std::size_t>(chromaWidth * chromaHeight)), v(u.size()) {
        picture.planes = {{{y.data(), width, width, height},
                           {u.data(), chromaWidth, chromaWidth, chromaHeight},
                           {v.data(), chromaWidth, chromaWidth, chromaHeight}}};
        picture.chromaShiftX = shiftX;
        picture.chromaShiftY = shiftY;
    }
    void fill() { // every sample differs from its neighbours
        for (std::size_t i = 0; i < y.size(); ++i) {
            y[i] = static_cast<std::uint8_t>(i * 37 + i / 7);
        }
        for (std::size_t i = 0; i < u.size(); ++i) {
            u[i] = static_cast<std::uint8_t>(i * 53 + 11);
            v[i] = static_cast<std::uint8_t>(i * 29 + 200);
        }
    }

    int chromaWidth, chromaHeight;
    Samples y, u, v;
    TheoraPicture picture;
};

TEST(ColorConvert, EveryTripleOfSamplesHasTheDefinedColour) {
    for (const ColorPath path : {ColorPath::fastest, ColorPath::portable}) {
        // One row holds every u for one y and v; 4:4:4, so that each pixel has its own.
        Planes planes(256, 256, 0, 0);
        Samples out(256 * 256 * 3);
        for (int luma = 0; luma < 256; ++luma) {
            for (int v = 0; v < 256; ++v) {
                for (int u = 0; u < 256; ++u) {
                    const auto at = static_cast<std::size_t>(v * 256 + u);
                    planes.y[at] = static_cast<std::uint8_t>(luma);
                    planes.u[at] = static_cast<std::uint8_t>(u);
                    planes.v[at] = static_cast<std::uint8_t>(v);
                }
            }
            theora::convertPicture(planes.picture, TheoraOutputMode::TH_RGB, out.data(), 256, 256,
                                   path);
            std::size_t wrong = 0;
            for (int v = 0; v < 256; ++v) {
                const std::uint8_t r = red(luma, v);
                for (int u = 0; u < 256; ++u) {
                    const std::uint8_t* pixel = out.data() + (v * 256 + u) * 3;
                    wrong +=
                        pixel[0] != r || pixel[1] != green(luma, u, v) || pixel[2] != blue(luma, u);
                }
            }
            ASSERT_EQ(wrong, 0U) << "luma " << luma;
        }
    }
}

TEST(ColorConvert, ReferenceGreysAreThoseOfVideoRange) {
    const struct {
        std::uint8_t luma;
        std::uint8_t grey;
    } cases[] = {{0, 0}, {16, 0}, {235, 254}, {236, 255}, {255, 255}};
    for (const auto& item : cases) {
        Planes planes(2, 2, 1, 1);
        planes.y.assign(4, item.luma);
        planes.u = planes.v = {128};
        Samples out(12);
        theora::convertPicture(planes.picture, TheoraOutputMode::TH_RGB, out.data(), 2, 2);
        EXPECT_EQ(out, Samples(12, item.grey)) << int{item.luma};
    }
}

enum Part { R, G, B, Y, U, V, A, X };
const std::vector<std::vector<Part>> kModes = {
    {},           {R, G, B},    {R, G, B, A}, {R, G, B, X}, {A, R, G, B}, {X, R, G, B},
    {B, G, R},    {B, G, R, A}, {B, G, R, X}, {A, B, G, R}, {X, B, G, R}, {Y},
    {Y, Y, Y},    {Y, Y, Y, A}, {Y, Y, Y, X}, {A, Y, Y, Y}, {X, Y, Y, Y}, {Y, U, V},
    {Y, U, V, A}, {Y, U, V, X}, {A, Y, U, V}, {X, Y, U, V}};

std::uint8_t partOf(Part part, const Planes& planes, int x, int y, int width) {
    const TheoraPicture& picture = planes.picture;
    const auto sample = [&](std::size_t plane, int column, int row) {
        const theora::TheoraPlane& from = picture.planes[plane];
        return from.data[row * from.rowBytes + column];
    };
    const int luma = sample(0, x, y);
    const int u = sample(1, x >> picture.chromaShiftX, y >> picture.chromaShiftY);
    const int v = sample(2, x >> picture.chromaShiftX, y >> picture.chromaShiftY);
    switch (part) {
    case R:
        return red(luma, v);
    case G:
        return green(luma, u, v);
    case B:
        return blue(luma, u);
    case Y:
        return static_cast<std::uint8_t>(luma);
    case U:
        return static_cast<std::uint8_t>(u);
    case V:
        return static_cast<std::uint8_t>(v);
    case A: {
        const int alpha = sample(0, x + width, y);
        return static_cast<std::uint8_t>(alpha < 32 ? 0 : alpha >= 225 ? 255 : alpha);
    }
    case X:
        break;
    }
    return 255;
}

TEST(ColorConvert, EveryModeOrdersItsBytesForEveryChromaFormatAndSize) {
    const struct {
        int shiftX;
        int shiftY;
    } chromas[] = {{1, 1}, {1, 0}, {0, 0}};
    const int widths[] = {1, 2, 15, 16, 31, 32, 48, 64, 321, 514};
    for (const auto& chroma : chromas) {
        for (const int width : widths) {
            for (int mode = 1; mode < theora::kOutputModeCount; ++mode) {
                const auto& parts = kModes[static_cast<std::size_t>(mode)];
                const int height = 5;
                const auto output = static_cast<TheoraOutputMode>(mode);
                const bool alpha = std::count(parts.begin(), parts.end(), A) > 0;
                ASSERT_EQ(theora::bytesPerPixel(output), static_cast<int>(parts.size()));
                ASSERT_EQ(theora::hasAlpha(output), alpha);
                Planes planes(alpha ? width * 2 : width, height, chroma.shiftX, chroma.shiftY);
                planes.fill();
                Samples expected;
                for (int y = 0; y < height; ++y) {
                    for (int x = 0; x < width; ++x) {
                        for (const Part part : parts) {
                            expected.push_back(partOf(part, planes, x, y, width));
                        }
                    }
                }
                for (const ColorPath path : {ColorPath::fastest, ColorPath::portable}) {
                    Samples out(expected.size() + 64, 7);
                    theora::convertPicture(planes.picture, output, out.data(), width, height, path);
                    ASSERT_TRUE(std::equal(expected.begin(), expected.end(), out.begin()))
                        << "mode " << mode << " width " << width << " shift " << chroma.shiftX;
                    ASSERT_EQ(std::count(out.end() - 64, out.end(), 7), 64); // nothing behind
                }
            }
        }
    }
}

TEST(ColorConvert, PlanesInBottomUpMemoryAreReadTheRightWayUp) {
    Planes planes(32, 4, 1, 1);
    planes.fill();
    Samples expected(32 * 4 * 3);
    theora::convertPicture(planes.picture, TheoraOutputMode::TH_RGB, expected.data(), 32, 4);
    Planes flipped(32, 4, 1, 1);
    for (std::size_t i = 0; i < 3; ++i) {
        theora::TheoraPlane& plane = flipped.picture.planes[i];
        auto* memory = const_cast<std::uint8_t*>(plane.data);
        for (int row = 0; row < plane.height; ++row) {
            std::copy_n(planes.picture.planes[i].data + row * plane.width, plane.width,
                        memory + (plane.height - 1 - row) * plane.width);
        }
        plane.data = memory + (plane.height - 1) * plane.width;
        plane.rowBytes = -plane.width;
    }
    Samples out(expected.size());
    theora::convertPicture(flipped.picture, TheoraOutputMode::TH_RGB, out.data(), 32, 4);
    EXPECT_EQ(out, expected);
}

TEST(VideoFrame, RowsArePackedWhateverTheStride) {
    theora::TheoraVideoFrame frame({TheoraOutputMode::TH_RGB, 20, 3, 32});
    EXPECT_EQ(frame.getBufferSize(), 32U * 3 * 3);
    EXPECT_TRUE(std::all_of(frame.getBuffer(), frame.getBuffer() + frame.getBufferSize(),
                            [](std::uint8_t byte) { return byte == 0xFF; }));
    Samples pixels(70 * 3);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = static_cast<std::uint8_t>(i);
    }
    frame.copyConverted(pixels.data(), 70);
    EXPECT_EQ(frame.getBuffer()[60], 70); // second row right behind the 60 bytes of the first
    EXPECT_EQ(frame.getBuffer()[179], 140 + 59);
    EXPECT_EQ(frame.getBuffer()[180], 0xFF);
}

TEST(VideoFrame, APictureSmallerThanTheFrameLeavesTheRest) {
    Planes planes(6, 3, 1, 1);
    planes.fill();
    theora::TheoraVideoFrame frame({TheoraOutputMode::TH_RGBA, 8, 5, 8});
    frame.decode(planes.picture);
    EXPECT_EQ(frame.getBuffer()[2 * 32 + 5 * 4], red(planes.y[17], planes.v[5]));
    EXPECT_EQ(frame.getBuffer()[6 * 4], 0xFF);
    EXPECT_EQ(frame.getBuffer()[3 * 32], 0xFF);
}

} // namespace
