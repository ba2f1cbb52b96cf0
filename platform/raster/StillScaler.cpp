#include "platform/raster/StillScaler.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/raster/Blend.h"

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

/// mix() for whole rows. By bytes: compilers turn that into far fewer instructions for many pixels.
void mixRows(const std::uint32_t* first, const std::uint32_t* second, std::uint32_t share,
             std::size_t count, std::uint32_t* to) {
    const auto* upper = reinterpret_cast<const std::uint8_t*>(first);
    const auto* lower = reinterpret_cast<const std::uint8_t*>(second);
    auto* mixed = reinterpret_cast<std::uint8_t*>(to);
    const auto lowerShare = static_cast<std::uint16_t>(share);
    const auto upperShare = static_cast<std::uint16_t>(256 - share);
    for (std::size_t i = 0; i < count * sizeof *to; ++i) {
        const auto sum = static_cast<std::uint16_t>(upper[i] * upperShare + lower[i] * lowerShare);
        mixed[i] = static_cast<std::uint8_t>(sum >> 8U);
    }
}

/// Each pixel from four; at an odd side the last ones count twice.
Bitmap halved(const Bitmap& still) {
    const Size size = still.size();
    Bitmap half({(size.width + 1) / 2, (size.height + 1) / 2});
    for (int y = 0; y < half.size().height; ++y) {
        const std::uint32_t* upper = still.row(2 * y);
        const std::uint32_t* lower = still.row(std::min(2 * y + 1, size.height - 1));
        for (int x = 0; x < half.size().width; ++x) {
            const int left = 2 * x;
            const int right = std::min(left + 1, size.width - 1);
            half.row(y)[x] =
                mix(mix(upper[left], upper[right], 128), mix(lower[left], lower[right], 128), 128);
        }
    }
    return half;
}

/// The rows of a still, each scaled to the width of a place. Of neighbouring rows of the place most
/// lie between the same two, so each is scaled once.
class ScaledRows {
public:
    using Pixels = std::vector<std::uint32_t>;
    struct Row {
        Pixels pixels;
        int number = -1;
        bool isOpaque = false;
    };

    ScaledRows(const Bitmap& still, std::vector<Between> columns)
        : m_still(still), m_columns(std::move(columns)), m_rows{Row{Pixels(m_columns.size())},
                                                                Row{Pixels(m_columns.size())}} {}

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
        const std::uint32_t* from = m_still.row(number);
        Row& row = m_rows[m_older];
        std::uint32_t* to = row.pixels.data();
        std::uint32_t all = 0xFF000000U;
        for (const auto& [first, second, share] : m_columns) {
            *to = mix(from[first], from[second], share);
            all &= *to++;
        }
        row.number = number;
        row.isOpaque = all >> 24U == 0xFFU;
        return m_older;
    }

    const Bitmap& m_still;
    std::vector<Between> m_columns;
    std::array<Row, 2> m_rows;
    std::size_t m_older = 0;
};

void drawNear(const Bitmap& still, PixelView target, const Rect& place, const Rect& visible) {
    const std::int64_t left = place.left;
    const std::int64_t top = place.top;
    std::vector<Between> columns;
    for (int x = visible.left; x < visible.right; ++x) {
        columns.push_back(between(x - left, still.size().width, place.right - left));
    }
    const std::size_t count = columns.size();
    ScaledRows scaled(still, std::move(columns));
    std::vector<std::uint32_t> mixed(count);
    for (int y = visible.top; y < visible.bottom; ++y) {
        const Between rows = between(y - top, still.size().height, place.bottom - top);
        const ScaledRows::Row& upper = scaled.row(rows.first);
        const ScaledRows::Row& lower = scaled.row(rows.second);
        std::uint32_t* to = target.row(y) + visible.left;
        const bool isOpaque = upper.isOpaque && lower.isOpaque;
        mixRows(upper.pixels.data(), lower.pixels.data(), rows.share, count,
                isOpaque ? to : mixed.data());
        for (std::size_t i = 0; !isOpaque && i < count; ++i) {
            to[i] = blendPixel(mixed[i], to[i]);
        }
    }
}

} // namespace

void drawStill(const Bitmap& still, PixelView target, const Rect& place, const Rect& clip) {
    const Rect visible = place.intersected(clip);
    if (visible.isEmpty() || still.isEmpty()) {
        return;
    }
    const auto isTooLarge = [&](const Bitmap& bitmap) {
        return bitmap.size().width / 2 > std::int64_t{place.right} - place.left ||
               bitmap.size().height / 2 > std::int64_t{place.bottom} - place.top;
    };
    if (!isTooLarge(still)) {
        drawNear(still, target, place, visible);
        return;
    }
    Bitmap smaller = halved(still);
    while (isTooLarge(smaller)) {
        smaller = halved(smaller);
    }
    drawNear(smaller, target, place, visible);
}

} // namespace platform::raster
