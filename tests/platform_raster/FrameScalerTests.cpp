#include <vector>

#include <gtest/gtest.h>

#include "platform/raster/FrameScaler.h"

using platform::Bitmap;
using platform::FrameBuffer;
using platform::Rect;
using platform::Size;
using platform::raster::nearestIndex;
using platform::raster::nearestRow;
using platform::raster::scaleFrame;

namespace {

/// Memory of exactly the promised size, so that a sanitizer sees a read beyond it.
class MemoryFrame final : public FrameBuffer {
public:
    explicit MemoryFrame(Size size) : m_size(size), m_bytes(byteCount()) {}
    [[nodiscard]] Size size() const override { return m_size; }
    [[nodiscard]] std::uint8_t* bits() override { return m_bytes.data(); }
    [[nodiscard]] const std::uint8_t* bits() const override { return m_bytes.data(); }

    /// Colours the pixel at (x, y), y counted from the top.
    void set(int x, int y, std::uint32_t rgb) {
        std::uint8_t* pixel = m_bytes.data() + (m_size.height - 1 - y) * rowBytes() + x * 3;
        pixel[0] = static_cast<std::uint8_t>(rgb);
        pixel[1] = static_cast<std::uint8_t>(rgb >> 8U);
        pixel[2] = static_cast<std::uint8_t>(rgb >> 16U);
    }

private:
    Size m_size;
    std::vector<std::uint8_t> m_bytes;
};

/// A frame whose pixel (x, y) has the colour of its own coordinates.
MemoryFrame coordinates(Size size) {
    MemoryFrame frame(size);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            frame.set(x, y, static_cast<std::uint32_t>(x << 12 | y));
        }
    }
    return frame;
}

} // namespace

TEST(NearestIndex, PicksThePixelsThatColorOnColorPicks) {
    const std::pair<int, std::vector<int>> cases[] = {{8, {1, 3, 5, 7}},
                                                      {4, {0, 1, 2, 3}},
                                                      {2, {0, 0, 0, 1, 1, 1}},
                                                      {3, {1, 2}},
                                                      {1, {0, 0, 0}},
                                                      {3, {0, 0, 1, 1, 1, 2, 2}},
                                                      {7, {6}},
                                                      {5, {0, 2, 3, 4}},
                                                      {5, {1, 2, 4}},
                                                      {4, {0, 0, 1, 2, 2, 3}}};
    for (const auto& [source, expected] : cases) {
        const int target = static_cast<int>(expected.size());
        for (int i = 0; i < target; ++i) {
            EXPECT_EQ(nearestIndex(i, source, target), expected[static_cast<std::size_t>(i)])
                << source << " to " << target;
        }
    }
}

TEST(ScaleFrame, ShowsEverySourcePixelByTheRuleForAllWidthsOfPadding) {
    const Size targets[] = {{12, 9}, {5, 3}, {29, 31}, {1, 1}};
    for (int width = 9; width <= 13; ++width) {
        const Size source{width, 7};
        const MemoryFrame frame = coordinates(source);
        for (const Size target : targets) {
            Bitmap bitmap({40, 40});
            scaleFrame(frame, bitmap, Rect::at(4, 5, target.width, target.height), {0, 0, 40, 40});
            for (int y = 0; y < target.height; ++y) {
                for (int x = 0; x < target.width; ++x) {
                    const auto expected = static_cast<std::uint32_t>(
                        nearestIndex(x, source.width, target.width) << 12 |
                        nearestRow(y, source.height, target.height));
                    ASSERT_EQ(bitmap.at(x + 4, y + 5), 0xFF000000U | expected)
                        << width << " wide at " << x << "," << y;
                }
            }
            EXPECT_EQ(bitmap.at(3, 5), 0U);
            EXPECT_EQ(bitmap.at(4 + target.width, 5), 0U);
        }
    }
}

TEST(ScaleFrame, DrawsOnlyWhatTheClipShowsOfTheSamePicture) {
    const MemoryFrame frame = coordinates({30, 20});
    Bitmap whole({50, 50});
    Bitmap part({50, 50});
    const Rect target{-10, -5, 70, 60};
    const Rect clip{7, 9, 31, 40};
    scaleFrame(frame, whole, target, {0, 0, 50, 50});
    scaleFrame(frame, part, target, clip);
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 50; ++x) {
            ASSERT_EQ(part.at(x, y), clip.contains({x, y}) ? whole.at(x, y) : 0U);
        }
    }
}

TEST(ScaleFrame, DrawsNothingForEmptyPictures) {
    Bitmap bitmap({4, 4});
    scaleFrame(coordinates({2, 2}), bitmap, {3, 3, 3, 9}, {0, 0, 4, 4});
    scaleFrame(coordinates({0, 2}), bitmap, {0, 0, 4, 4}, {0, 0, 4, 4});
    scaleFrame(coordinates({2, 2}), bitmap, {0, 0, 4, 4}, {9, 9, 2, 2});
    for (int x = 0; x < 4; ++x) {
        EXPECT_EQ(bitmap.at(x, x), 0U);
    }
}
