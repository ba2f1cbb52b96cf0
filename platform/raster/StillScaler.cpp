#include "platform/raster/StillScaler.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/raster/Blend.h"
#include "platform/raster/FramePixels.h"

namespace platform::raster {

namespace {

/// Two neighbours of the still, and the second one's share in 256ths.
struct Between {
    int first = 0;
    int second = 0;
    std::uint32_t share = 0;
};

/// Where the middle of target pixel `at`, counted from the place's edge, lies in the still.
Between between(std::int64_t at, std::int64_t stillLength, std::int64_t placeLength) {
    const std::int64_t doubled = (2 * at + 1) * stillLength * 256 / placeLength - 256;
    const std::int64_t middle = std::clamp<std::int64_t>(doubled / 2, 0, (stillLength - 1) * 256);
    const auto first = static_cast<int>(middle / 256);
    return {first, std::min(first + 1, static_cast<int>(stillLength) - 1),
            static_cast<std::uint32_t>(middle % 256)};
}

/// Each channel between two pixels; the shares of both make 256.
std::uint32_t mix(std::uint32_t first, std::uint32_t second, std::uint32_t share) {
    const std::uint32_t odd =
        (first & 0x00FF00FFU) * (256 - share) + (second & 0x00FF00FFU) * share;
    const std::uint32_t even =
        ((first >> 8U) & 0x00FF00FFU) * (256 - share) + ((second >> 8U) & 0x00FF00FFU) * share;
    return ((odd >> 8U) & 0x00FF00FFU) | (even & 0xFF00FF00U);
}

/// mix() for whole rows; `shareOf` has the second one's share for each byte. By bytes: compilers
/// turn that into far fewer instructions for many pixels.
template <class ShareOf>
void mixRows(const std::uint32_t* first, const std::uint32_t* second, std::size_t count,
             const ShareOf& shareOf, std::uint32_t* to) {
    const auto* firstBytes = reinterpret_cast<const std::uint8_t*>(first);
    const auto* secondBytes = reinterpret_cast<const std::uint8_t*>(second);
    auto* mixed = reinterpret_cast<std::uint8_t*>(to);
    for (std::size_t i = 0; i < count * sizeof *to; ++i) {
        const std::uint16_t share = shareOf(i);
        const auto sum =
            static_cast<std::uint16_t>(firstBytes[i] * (256 - share) + secondBytes[i] * share);
        mixed[i] = static_cast<std::uint8_t>(sum >> 8U);
    }
}

/// A bitmap as what is scaled.
class BitmapPixels {
public:
    explicit BitmapPixels(const Bitmap& bitmap) : m_bitmap(bitmap) {}

    [[nodiscard]] Size size() const { return m_bitmap.size(); }
    [[nodiscard]] std::uint32_t at(int x, int y) const { return m_bitmap.at(x, y); }
    /// Both neighbours of each column in row y.
    void fetch(int y, const std::vector<Between>& columns, std::uint32_t* first,
               std::uint32_t* second) const {
        const std::uint32_t* row = m_bitmap.row(y);
        for (const Between& column : columns) {
            *first++ = row[column.first];
            *second++ = row[column.second];
        }
    }

private:
    const Bitmap& m_bitmap;
};

/// A video picture, of which no copy as a bitmap is made.
class FramePixels {
public:
    explicit FramePixels(const FrameBuffer& frame)
        : m_frame(frame), m_rowBytes(static_cast<std::size_t>(frame.rowBytes())) {}

    [[nodiscard]] Size size() const { return m_frame.size(); }
    [[nodiscard]] std::uint32_t at(int x, int y) const { return readPixel(bytesAt(row(y), x)); }
    void fetch(int y, const std::vector<Between>& columns, std::uint32_t* first,
               std::uint32_t* second) const {
        const std::uint8_t* from = row(y);
        // One load has both neighbours, and two bytes more, which the end of a row may not have.
        const auto pairs = static_cast<std::size_t>(
            std::partition_point(
                columns.begin(), columns.end(),
                [last = size().width - 2](const Between& column) { return column.first < last; }) -
            columns.begin());
        for (std::size_t i = 0; i < pairs; ++i) {
            readPixelPair(bytesAt(from, columns[i].first), first[i], second[i]);
        }
        for (std::size_t i = pairs; i < columns.size(); ++i) {
            first[i] = readPixel(bytesAt(from, columns[i].first));
            second[i] = readPixel(bytesAt(from, columns[i].second));
        }
    }

private:
    [[nodiscard]] const std::uint8_t* row(int y) const {
        return m_frame.bits() + static_cast<std::size_t>(size().height - 1 - y) * m_rowBytes;
    }
    static const std::uint8_t* bytesAt(const std::uint8_t* row, int x) {
        return row + static_cast<std::ptrdiff_t>(x) * kFrameBytesPerPixel;
    }

    const FrameBuffer& m_frame;
    std::size_t m_rowBytes;
};

/// Each pixel from four; at an odd side the last ones count twice.
template <class Pixels>
Bitmap halved(const Pixels& still) {
    const Size size = still.size();
    Bitmap half({(size.width + 1) / 2, (size.height + 1) / 2});
    for (int y = 0; y < half.size().height; ++y) {
        const int upper = 2 * y;
        const int lower = std::min(upper + 1, size.height - 1);
        for (int x = 0; x < half.size().width; ++x) {
            const int left = 2 * x;
            const int right = std::min(left + 1, size.width - 1);
            half.row(y)[x] = mix(mix(still.at(left, upper), still.at(right, upper), 128),
                                 mix(still.at(left, lower), still.at(right, lower), 128), 128);
        }
    }
    return half;
}

/// The rows of a still, each scaled to the width of a place. Of neighbouring rows of the place most
/// lie between the same two, so each is scaled once.
template <class Pixels>
class ScaledRows {
public:
    struct Row {
        std::vector<std::uint32_t> pixels;
        int number = -1;
        bool isOpaque = false;
    };

    ScaledRows(const Pixels& still, std::vector<Between> columns)
        : m_still(still), m_columns(std::move(columns)), m_first(m_columns.size()),
          m_second(m_columns.size()) {
        for (Row& row : m_rows) {
            row.pixels.resize(m_columns.size());
        }
        m_shares.reserve(m_columns.size() * sizeof(std::uint32_t));
        for (const Between& column : m_columns) {
            m_shares.insert(m_shares.end(), sizeof(std::uint32_t),
                            static_cast<std::uint16_t>(column.share));
        }
    }

    /// Valid until a third row is asked for.
    const Row& row(int number) {
        const std::size_t kept = m_rows[0].number == number   ? 0
                                 : m_rows[1].number == number ? 1
                                                              : scale(number);
        m_older = 1 - kept;
        return m_rows[kept];
    }

private:
    std::size_t scale(int number) {
        Row& row = m_rows[m_older];
        m_still.fetch(number, m_columns, m_first.data(), m_second.data());
        mixRows(
            m_first.data(), m_second.data(), m_columns.size(),
            [shares = m_shares.data()](std::size_t byte) { return shares[byte]; },
            row.pixels.data());
        std::uint32_t all = 0xFF000000U;
        for (const std::uint32_t pixel : row.pixels) {
            all &= pixel;
        }
        row.number = number;
        row.isOpaque = all >> 24U == 0xFFU;
        return m_older;
    }

    const Pixels& m_still;
    std::vector<Between> m_columns;
    std::vector<std::uint32_t> m_first;  ///< of the row being scaled: the left neighbours,
    std::vector<std::uint32_t> m_second; ///< and the right ones
    std::vector<std::uint16_t> m_shares; ///< of the right ones, for each byte
    std::array<Row, 2> m_rows;
    std::size_t m_older = 0;
};

template <class Pixels>
void drawNear(const Pixels& still, PixelView target, const Rect& place, const Rect& visible) {
    const std::int64_t left = place.left;
    const std::int64_t top = place.top;
    std::vector<Between> columns;
    for (int x = visible.left; x < visible.right; ++x) {
        columns.push_back(between(x - left, still.size().width, place.right - left));
    }
    const std::size_t count = columns.size();
    ScaledRows<Pixels> scaled(still, std::move(columns));
    std::vector<std::uint32_t> mixed(count);
    for (int y = visible.top; y < visible.bottom; ++y) {
        const Between rows = between(y - top, still.size().height, place.bottom - top);
        const auto& upper = scaled.row(rows.first);
        const auto& lower = scaled.row(rows.second);
        std::uint32_t* to = target.row(y) + visible.left;
        const bool isOpaque = upper.isOpaque && lower.isOpaque;
        mixRows(
            upper.pixels.data(), lower.pixels.data(), count,
            [share = static_cast<std::uint16_t>(rows.share)](std::size_t /*byte*/) {
                return share;
            },
            isOpaque ? to : mixed.data());
        for (std::size_t i = 0; !isOpaque && i < count; ++i) {
            to[i] = blendPixel(mixed[i], to[i]);
        }
    }
}

template <class Pixels>
void draw(const Pixels& still, PixelView target, const Rect& place, const Rect& clip) {
    const Rect visible = place.intersected(clip);
    if (visible.isEmpty() || still.size().width < 1 || still.size().height < 1) {
        return;
    }
    const auto isTooLarge = [&](Size size) {
        return size.width / 2 > std::int64_t{place.right} - place.left ||
               size.height / 2 > std::int64_t{place.bottom} - place.top;
    };
    if (!isTooLarge(still.size())) {
        drawNear(still, target, place, visible);
        return;
    }
    Bitmap smaller = halved(still);
    while (isTooLarge(smaller.size())) {
        smaller = halved(BitmapPixels(smaller));
    }
    drawNear(BitmapPixels(smaller), target, place, visible);
}

} // namespace

void drawStill(const Bitmap& still, PixelView target, const Rect& place, const Rect& clip) {
    draw(BitmapPixels(still), target, place, clip);
}

void drawFrameSmoothly(const FrameBuffer& frame, PixelView target, const Rect& place,
                       const Rect& clip) {
    draw(FramePixels(frame), target, place, clip);
}

} // namespace platform::raster
