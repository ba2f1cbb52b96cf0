#include "platform/raster/StillScaler.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

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

/// mix() for whole rows, by bytes: compilers turn that into far fewer instructions for many pixels.
void mixBytes(const std::uint8_t* first, const std::uint8_t* second, std::size_t count,
              std::uint32_t share, std::uint8_t* to) {
    const auto secondShare = static_cast<std::uint16_t>(share);
    for (std::size_t i = 0; i < count; ++i) {
        const auto sum =
            static_cast<std::uint16_t>(first[i] * (256 - secondShare) + second[i] * secondShare);
        to[i] = static_cast<std::uint8_t>(sum >> 8U);
    }
}

/// A bitmap as what is scaled.
class BitmapPixels {
public:
    static constexpr int kBytes = sizeof(std::uint32_t);
    static constexpr bool kOpaque = false;

    explicit BitmapPixels(const Bitmap& bitmap) : m_bitmap(bitmap) {}

    [[nodiscard]] Size size() const { return m_bitmap.size(); }
    [[nodiscard]] const std::uint8_t* row(int y) const {
        return reinterpret_cast<const std::uint8_t*>(m_bitmap.row(y));
    }
    static std::uint32_t read(const std::uint8_t* bytes) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, bytes, sizeof pixel);
        return pixel;
    }

private:
    const Bitmap& m_bitmap;
};

/// A video picture, of which no copy as a bitmap is made.
class FramePixels {
public:
    static constexpr int kBytes = kFrameBytesPerPixel;
    static constexpr bool kOpaque = true;

    explicit FramePixels(const FrameBuffer& frame)
        : m_size(frame.size()), m_bits(frame.bits()),
          m_rowBytes(static_cast<std::size_t>(frame.rowBytes())) {}

    [[nodiscard]] Size size() const { return m_size; }
    [[nodiscard]] const std::uint8_t* row(int y) const {
        return m_bits + static_cast<std::size_t>(m_size.height - 1 - y) * m_rowBytes;
    }
    static std::uint32_t read(const std::uint8_t* bytes) { return readPixel(bytes); }

private:
    Size m_size;
    const std::uint8_t* m_bits;
    std::size_t m_rowBytes;
};

template <class Pixels>
std::uint32_t pixelAt(const std::uint8_t* row, int x) {
    return Pixels::read(row + static_cast<std::ptrdiff_t>(x) * Pixels::kBytes);
}

/// Each pixel from four; at an odd side the last ones count twice.
template <class Pixels>
Bitmap halved(const Pixels& still) {
    const Size size = still.size();
    Bitmap half({(size.width + 1) / 2, (size.height + 1) / 2});
    for (int y = 0; y < half.size().height; ++y) {
        const std::uint8_t* upper = still.row(2 * y);
        const std::uint8_t* lower = still.row(std::min(2 * y + 1, size.height - 1));
        for (int x = 0; x < half.size().width; ++x) {
            const int left = 2 * x;
            const int right = std::min(left + 1, size.width - 1);
            half.row(y)[x] =
                mix(mix(pixelAt<Pixels>(upper, left), pixelAt<Pixels>(upper, right), 128),
                    mix(pixelAt<Pixels>(lower, left), pixelAt<Pixels>(lower, right), 128), 128);
        }
    }
    return half;
}

/// Scales rows to the visible columns of a place.
template <class Pixels>
class Columns {
public:
    Columns(int stillWidth, const Rect& place, const Rect& visible) {
        const std::int64_t left = place.left;
        for (int x = visible.left; x < visible.right; ++x) {
            const Between column = between(x - left, stillWidth, place.right - left);
            m_columns.push_back(column);
            Weights weights;
            std::fill_n(weights.lanes.begin(), kBytes,
                        static_cast<std::uint16_t>(256 - column.share));
            std::fill_n(weights.lanes.begin() + kBytes, kBytes,
                        static_cast<std::uint16_t>(column.share));
            m_weights.push_back(weights);
            m_readableAtOnce += column.first * kBytes + kAtOnce <= stillWidth * kBytes ? 1 : 0;
        }
    }

    [[nodiscard]] std::size_t count() const { return m_columns.size(); }
    /// The bytes of a row that are looked at: from the first up to, not including, the second.
    [[nodiscard]] std::pair<std::size_t, std::size_t> needed() const {
        return {static_cast<std::size_t>(m_columns.front().first) * kBytes,
                static_cast<std::size_t>(m_columns.back().second + 1) * kBytes};
    }
    /// `row`: a whole one of the still. Returns whether all pixels are opaque.
    bool scale(const std::uint8_t* row, std::uint32_t* to) const {
        std::size_t done = 0;
#ifdef __SSE2__
        for (; done + 2 <= m_readableAtOnce; done += 2) {
            const __m128i both =
                _mm_unpacklo_epi64(sumOfNeighbours(row, done), sumOfNeighbours(row, done + 1));
            const __m128i mixed = _mm_packus_epi16(_mm_srli_epi16(both, 8), _mm_setzero_si128());
            _mm_storel_epi64(reinterpret_cast<__m128i*>(to + done),
                             Pixels::kOpaque ? _mm_or_si128(mixed, _mm_set1_epi32(kAlpha)) : mixed);
        }
#endif
        for (; done < count(); ++done) {
            const Between& column = m_columns[done];
            to[done] = mix(pixelAt<Pixels>(row, column.first), pixelAt<Pixels>(row, column.second),
                           column.share);
        }
        return Pixels::kOpaque || std::all_of(to, to + count(), [](std::uint32_t pixel) {
                   return pixel >> 24U == 0xFFU;
               });
    }

private:
    static constexpr int kBytes = Pixels::kBytes;
    static constexpr int kAtOnce = 8; ///< bytes of one load, which has both neighbours
    static constexpr int kAlpha = -0x1000000;

    /// For each of these bytes.
    struct alignas(16) Weights {
        std::array<std::uint16_t, kAtOnce> lanes{};
    };

#ifdef __SSE2__
    /// Of each channel, in 256ths: one lane each.
    [[nodiscard]] __m128i sumOfNeighbours(const std::uint8_t* row, std::size_t index) const {
        const std::uint8_t* from = row + std::ptrdiff_t{m_columns[index].first} * kBytes;
        const __m128i neighbours = _mm_unpacklo_epi8(
            _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)), _mm_setzero_si128());
        const __m128i weighed = _mm_mullo_epi16(
            neighbours,
            _mm_load_si128(reinterpret_cast<const __m128i*>(m_weights[index].lanes.data())));
        return _mm_add_epi16(weighed, _mm_srli_si128(weighed, 2 * kBytes));
    }
#endif

    std::vector<Between> m_columns;
    std::vector<Weights> m_weights;
    std::size_t m_readableAtOnce = 0; ///< those before the end of the row is near
};

/// `isOpaque`: `mixed` is.
void put(const std::vector<std::uint32_t>& mixed, bool isOpaque, std::uint32_t* to) {
    if (isOpaque) {
        std::ranges::copy(mixed, to);
        return;
    }
    for (const std::uint32_t pixel : mixed) {
        *to = blendPixel(pixel, *to);
        ++to;
    }
}

/// Each row of the place lies between rows of its own: mixes those first, then scales what results
/// to the width.
template <class Pixels>
void drawReduced(const Pixels& still, PixelView target, const Rect& place, const Rect& visible) {
    const Columns<Pixels> columns(still.size().width, place, visible);
    const auto [from, end] = columns.needed();
    std::vector<std::uint8_t> row(static_cast<std::size_t>(still.size().width) * Pixels::kBytes);
    std::vector<std::uint32_t> mixed(columns.count());
    const std::int64_t top = place.top;
    for (int y = visible.top; y < visible.bottom; ++y) {
        const Between rows = between(y - top, still.size().height, place.bottom - top);
        mixBytes(still.row(rows.first) + from, still.row(rows.second) + from, end - from,
                 rows.share, row.data() + from);
        const bool isOpaque = columns.scale(row.data(), mixed.data());
        put(mixed, isOpaque, target.row(y) + visible.left);
    }
}

/// Most neighbouring rows of the place lie between the same two of the still, which are scaled to
/// the width once.
template <class Pixels>
void drawEnlarged(const Pixels& still, PixelView target, const Rect& place, const Rect& visible) {
    struct Row {
        std::vector<std::uint32_t> pixels;
        int number = -1;
        bool isOpaque = false;
    };
    const Columns<Pixels> columns(still.size().width, place, visible);
    Row upper{std::vector<std::uint32_t>(columns.count())};
    Row lower{upper};
    const auto scale = [&](int number, Row& row) {
        if (row.number != number) {
            row.number = number;
            row.isOpaque = columns.scale(still.row(number), row.pixels.data());
        }
    };
    std::vector<std::uint32_t> mixed(columns.count());
    const std::int64_t top = place.top;
    for (int y = visible.top; y < visible.bottom; ++y) {
        const Between rows = between(y - top, still.size().height, place.bottom - top);
        if (lower.number == rows.first) {
            std::swap(upper, lower);
        }
        scale(rows.first, upper);
        scale(rows.second, lower);
        mixBytes(reinterpret_cast<const std::uint8_t*>(upper.pixels.data()),
                 reinterpret_cast<const std::uint8_t*>(lower.pixels.data()),
                 mixed.size() * sizeof mixed.front(), rows.share,
                 reinterpret_cast<std::uint8_t*>(mixed.data()));
        put(mixed, upper.isOpaque && lower.isOpaque, target.row(y) + visible.left);
    }
}

template <class Pixels>
void drawNear(const Pixels& still, PixelView target, const Rect& place, const Rect& visible) {
    if (still.size().height > std::int64_t{place.bottom} - place.top) {
        drawReduced(still, target, place, visible);
    } else {
        drawEnlarged(still, target, place, visible);
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
