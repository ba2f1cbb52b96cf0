#include "platform/raster/StillScaler.h"

#include <algorithm>
#include <cstdint>
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

void drawNear(const Bitmap& still, PixelView target, const Rect& place, const Rect& visible) {
    const std::int64_t left = place.left;
    const std::int64_t top = place.top;
    std::vector<Between> columns;
    for (int x = visible.left; x < visible.right; ++x) {
        columns.push_back(between(x - left, still.size().width, place.right - left));
    }
    for (int y = visible.top; y < visible.bottom; ++y) {
        const Between rows = between(y - top, still.size().height, place.bottom - top);
        const std::uint32_t* upper = still.row(rows.first);
        const std::uint32_t* lower = still.row(rows.second);
        std::uint32_t* to = target.row(y) + visible.left;
        for (const auto& [first, second, share] : columns) {
            *to = blendPixel(mix(mix(upper[first], upper[second], share),
                                 mix(lower[first], lower[second], share), rows.share),
                             *to);
            ++to;
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
