#include "platform/raster/Shapes.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace platform::raster {

namespace {

constexpr std::int64_t kCoordinateLimit = 1 << 27;

/// A line seen along its longer axis: `major` steps by one, `minor` follows.
struct Stretch {
    std::int64_t majorStart, minorStart;
    std::int64_t majorLength, minorLength; ///< not negative
    int majorStep, minorStep;              ///< 1 or -1
};

Stretch stretchOf(std::int64_t majorFrom, std::int64_t majorTo, std::int64_t minorFrom,
                  std::int64_t minorTo) {
    return {majorFrom,
            minorFrom,
            std::abs(majorTo - majorFrom),
            std::abs(minorTo - minorFrom),
            majorTo < majorFrom ? -1 : 1,
            minorTo < minorFrom ? -1 : 1};
}

std::int64_t minorAt(const Stretch& line, std::int64_t step) {
    const std::int64_t product = step * line.minorLength;
    const std::int64_t whole = product / line.majorLength;
    const std::int64_t doubledRest = 2 * (product % line.majorLength);
    const bool tie = doubledRest == line.majorLength;
    const bool further = doubledRest > line.majorLength || (tie && line.minorStep < 0);
    return line.minorStart + line.minorStep * (whole + (further ? 1 : 0));
}

/// The steps whose major coordinate lies in [low, high), as a half-open range.
std::pair<std::int64_t, std::int64_t> visibleSteps(const Stretch& line, int low, int high) {
    const std::int64_t first =
        line.majorStep > 0 ? low - line.majorStart : line.majorStart - (high - 1);
    const std::int64_t end =
        line.majorStep > 0 ? high - line.majorStart : line.majorStart - low + 1;
    return {std::max<std::int64_t>(first, 0), std::min(end, line.majorLength)};
}

std::int64_t limited(int value) {
    return std::clamp<std::int64_t>(value, -kCoordinateLimit, kCoordinateLimit);
}

/// Doubled distance from the centre line at which the outline of an ellipse lies, given the doubled
/// distance `across` on the other axis: the pixel row nearest to the true curve, ties inward.
/// `spanAlong` and `spanAcross` are the box's sides less one; results share spanAlong's parity.
std::int64_t outlineAt(std::int64_t across, std::int64_t spanAlong, std::int64_t spanAcross) {
    const std::int64_t limit = spanAlong * spanAlong * spanAcross * spanAcross;
    const std::int64_t acrossPart = across * across * spanAlong * spanAlong;
    const auto inside = [&](std::int64_t along) {
        return (along - 1) * (along - 1) * spanAcross * spanAcross + acrossPart < limit;
    };
    // Bisect over the values of the right parity; the smallest one needs no test.
    std::int64_t low = spanAlong % 2;
    std::int64_t high = spanAlong;
    while (low < high) {
        const std::int64_t middle = low + ((high - low) / 2 + 1) / 2 * 2;
        if (inside(middle)) {
            low = middle;
        } else {
            high = middle - 2;
        }
    }
    return low;
}

} // namespace

void walkLine(Point from, Point to, const Rect& clip, const std::function<void(Point)>& plot) {
    const std::int64_t x0 = limited(from.x);
    const std::int64_t y0 = limited(from.y);
    const std::int64_t x1 = limited(to.x);
    const std::int64_t y1 = limited(to.y);
    const bool flat = std::abs(x1 - x0) >= std::abs(y1 - y0);
    const Stretch line = flat ? stretchOf(x0, x1, y0, y1) : stretchOf(y0, y1, x0, x1);
    const auto [first, end] = flat ? visibleSteps(line, clip.left, clip.right)
                                   : visibleSteps(line, clip.top, clip.bottom);
    for (std::int64_t step = first; step < end; ++step) {
        const int major = static_cast<int>(line.majorStart + line.majorStep * step);
        const int minor = static_cast<int>(minorAt(line, step));
        const Point pixel = flat ? Point{major, minor} : Point{minor, major};
        if (clip.contains(pixel)) {
            plot(pixel);
        }
    }
}

EllipseRow ellipseRow(Size box, int row) {
    if (box.width < 3 || box.height < 3) { // all outline; a single pixel draws nothing, as in GDI
        const int inked = box.width == 1 && box.height == 1 ? 0 : box.width;
        return {0, inked, inked, inked};
    }
    const std::int64_t spanX = box.width - 1;
    const std::int64_t spanY = box.height - 1;
    const std::int64_t y = std::abs(spanY - 2 * static_cast<std::int64_t>(row));
    // The outline's pixels in this row: where the curve is steep one for the row itself, where it
    // is flat one for each column whose nearest pixel lies in the row.
    std::int64_t outermost = -1;
    std::int64_t innermost = spanX + 1;
    const auto take = [&](std::int64_t x) {
        outermost = std::max(outermost, x);
        innermost = std::min(innermost, x);
    };
    const std::int64_t steepX = outlineAt(y, spanX, spanY);
    if (y * spanX * spanX <= steepX * spanY * spanY) {
        take(steepX);
    }
    for (std::int64_t x = spanX % 2; x <= spanX; x += 2) {
        if (outlineAt(x, spanY, spanX) == y && x * spanY * spanY <= y * spanX * spanX) {
            take(x);
        }
    }
    if (outermost < 0) { // neither part includes the row where they meet: the curve itself decides
        take(steepX);
    }
    const int left = static_cast<int>((spanX - outermost) / 2);
    const int innerLeft = static_cast<int>((spanX - innermost) / 2) + 1;
    const int innerRight = std::max(innerLeft, box.width - innerLeft);
    return {left, innerLeft, innerRight, box.width - left};
}

} // namespace platform::raster
