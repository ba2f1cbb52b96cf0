#include "platform/raster/PathFiller.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <utility>

#include "platform/raster/Blend.h"

namespace platform::raster {

namespace {

constexpr int kFraction = 8; // bits
constexpr std::int64_t kOne = 1 << kFraction;
constexpr double kLimit = 1 << 21;
constexpr int kMarkBits = 64;
constexpr int kFullCover = 2 * kOne; ///< of one row in a change, for each 256th of its height

/// No number counts as the lowest one.
std::int64_t toFixed(double value) {
    const double limited = value > kLimit ? kLimit : value > -kLimit ? value : -kLimit;
    return static_cast<std::int64_t>(std::floor(limited * static_cast<double>(kOne) + 0.5));
}

/// 0 to 255.
unsigned alphaOfCover(std::uint32_t cover) {
    constexpr unsigned kShift = 2 * kFraction + 1 - 8;
    const bool isNegative = cover >> 31U != 0; // of parts that run round the other way
    return std::min((isNegative ? 0 - cover : cover) >> kShift, 255U);
}

void blendRun(std::uint32_t* from, const std::uint32_t* to, std::uint32_t pixel) {
    if (pixel >> 24U == 255) {
        std::fill_n(from, to - from, pixel);
        return;
    }
    for (; from != to; ++from) {
        *from = blendPixel(pixel, *from);
    }
}

} // namespace

struct PathFiller::FixedPoint {
    std::int64_t x = 0;
    std::int64_t y = 0;
    explicit FixedPoint(PointF point) : x(toFixed(point.x)), y(toFixed(point.y)) {}
};

void PathFiller::fill(PixelView target, const Rect& clip, const Path& path, Color color) {
    Rect bounds;
    for (const Path::Part& part : path.parts()) {
        for (const PointF& point : part.points) {
            const FixedPoint at(point);
            bounds = bounds.united(Rect::at(static_cast<int>(at.x >> kFraction),
                                            static_cast<int>(at.y >> kFraction), 1, 1));
        }
    }
    const Rect area = bounds.intersected(clip);
    if (area.isEmpty() || alphaOf(color) == 0) {
        return;
    }
    begin(area);
    for (const Path::Part& part : path.parts()) {
        FixedPoint from(part.points.back());
        for (const PointF& point : part.points) {
            const FixedPoint to(point);
            addEdge(from, to);
            from = to;
        }
    }
    for (int row = 0; row < area.height(); ++row) {
        sweepRow(target.row(area.top + row) + area.left, row, premultiply(color));
    }
}

void PathFiller::begin(const Rect& area) {
    m_area = area;
    const auto rows = static_cast<std::size_t>(area.height());
    m_marksPerRow = area.width() / kMarkBits + 1;
    const std::size_t changes = rows * (static_cast<std::size_t>(area.width()) + 1);
    const std::size_t marks = rows * static_cast<std::size_t>(m_marksPerRow);
    m_changes.resize(std::max(m_changes.size(), changes));
    m_marks.resize(std::max(m_marks.size(), marks));
}

void PathFiller::addEdge(FixedPoint from, FixedPoint to) {
    const int sign = from.y < to.y ? 1 : -1;
    if (sign < 0) {
        std::swap(from, to);
    }
    const std::int64_t top = std::max(from.y, m_area.top * kOne);
    const std::int64_t bottom = std::min(to.y, m_area.bottom * kOne);
    const auto across = [&](std::int64_t y) {
        return from.x + (to.x - from.x) * (y - from.y) / (to.y - from.y);
    };
    for (std::int64_t y = top; y < bottom;) {
        const std::int64_t next = std::min((y | (kOne - 1)) + 1, bottom);
        addInRow(static_cast<int>(y >> kFraction) - m_area.top, across(y), across(next),
                 static_cast<int>(next - y) * sign);
        y = next;
    }
}

/// The part of an edge inside one row, `height` 256ths high; negative where it goes up.
void PathFiller::addInRow(int row, std::int64_t from, std::int64_t to, int height) {
    const std::int64_t left = m_area.left * kOne;
    const std::int64_t right = m_area.right * kOne;
    const bool forward = from <= to;
    int done = 0;
    std::int64_t x = from;
    do {
        // The pixel that the edge passes next, or all those outside the area at once.
        const std::int64_t column = (forward ? x : x - 1) >> kFraction;
        std::int64_t next = (forward ? column + 1 : column) << kFraction;
        if (forward) {
            next = std::min(to, x < left ? left : x < right ? next : to);
        } else {
            next = std::max(to, x > right ? right : x > left ? next : to);
        }
        const int upTo =
            next == to ? height : static_cast<int>(height * (next - from) / (to - from));
        const std::int64_t start = column << kFraction;
        const bool inside = column >= m_area.left && column < m_area.right;
        addCell(row, column, upTo - done,
                inside ? (upTo - done) * static_cast<int>(x - start + next - start) : 0);
        done = upTo;
        x = next;
    } while (x != to);
}

/// `doubleArea`: twice what lies left of the edge in the pixel.
void PathFiller::addCell(int row, std::int64_t column, int height, int doubleArea) {
    if (column >= m_area.right || height == 0) {
        return; // covers nothing in the area
    }
    const int at = static_cast<int>(std::max<std::int64_t>(column - m_area.left, 0));
    change(row, at, height * kFullCover - doubleArea);
    if (doubleArea != 0) {
        change(row, at + 1, doubleArea);
    }
}

void PathFiller::change(int row, int column, int by) {
    const auto stride = static_cast<std::size_t>(m_area.width()) + 1;
    const auto rowIndex = static_cast<std::size_t>(row);
    const auto columnIndex = static_cast<std::size_t>(column);
    m_changes[rowIndex * stride + columnIndex] += static_cast<std::uint32_t>(by);
    m_marks[rowIndex * static_cast<std::size_t>(m_marksPerRow) + columnIndex / kMarkBits] |=
        std::uint64_t{1} << (columnIndex % kMarkBits);
}

void PathFiller::sweepRow(std::uint32_t* pixels, int row, std::uint32_t pixel) {
    const int width = m_area.width();
    std::uint32_t* changes =
        &m_changes[static_cast<std::size_t>(row) * (static_cast<std::size_t>(width) + 1)];
    std::uint64_t* marks =
        &m_marks[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_marksPerRow)];
    std::uint32_t cover = 0;
    int done = 0;
    const auto drawUpTo = [&](int column) {
        if (const unsigned alpha = alphaOfCover(cover); alpha > 0 && column > done) {
            blendRun(pixels + done, pixels + column, scalePixel(pixel, alpha));
        }
        done = column;
    };
    for (int word = 0; word < m_marksPerRow; ++word) {
        for (std::uint64_t bits = std::exchange(marks[word], 0); bits != 0; bits &= bits - 1) {
            const int column = word * kMarkBits + std::countr_zero(bits);
            drawUpTo(column);
            cover += std::exchange(changes[column], 0);
        }
    }
    drawUpTo(width);
}

} // namespace platform::raster
