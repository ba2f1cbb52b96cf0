#include "zone/ShapeDrawing.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "core/Text.h"
#include "zone/ShapeGeometry.h"
#include "zone/ZoneView.h"

namespace zone {
namespace {

using platform::Color;
using platform::Point;
using platform::Rect;

constexpr Color kHandleOutline = platform::rgb(250, 0, 0);
constexpr Color kHandleFill = platform::rgb(255, 255, 255);
constexpr Color kSelectedFill = platform::rgb(255, 255, 0);
constexpr Color kNumberColor = platform::rgb(0, 0, 0);
constexpr int kHandleSize = 2 * kHandleReach;
/// Canvases draw to about this far; a handle beside it still has room inside an int.
constexpr std::int64_t kFarthest = std::int64_t{1} << 27;

Color segmentColor(bool highlighted, bool active) {
    const unsigned strength = active ? 255 : 192;
    return platform::rgb(strength, highlighted ? strength : 0, 0);
}

Point placed(Point point, Point origin) {
    const auto side = [](int value, int offset) {
        return static_cast<int>(std::clamp(std::int64_t{value} + offset, -kFarthest, kFarthest));
    };
    return {side(point.x, origin.x), side(point.y, origin.y)};
}

int narrowed(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

Point centerOf(std::span<const Point> points) {
    std::int64_t x = 0;
    std::int64_t y = 0;
    for (const Point& point : points) {
        x += point.x;
        y += point.y;
    }
    const auto count = static_cast<std::int64_t>(points.size());
    if (count >= kMinimumOutline) {
        x /= count;
        y /= count;
    }
    return {narrowed(x), narrowed(y)};
}

/// A box of the given size around `at`; halves truncate, so an odd size loses one pixel.
Rect boxAround(Point at, platform::Size size) {
    return {at.x - size.width / 2, at.y - size.height / 2, at.x + size.width / 2,
            at.y + size.height / 2};
}

void drawHandle(platform::Canvas& canvas, Point at, bool selected) {
    canvas.drawEllipse(boxAround(at, {kHandleSize, kHandleSize}), kHandleOutline,
                       selected ? kSelectedFill : kHandleFill);
}

void drawNumber(platform::Canvas& canvas, Point at, std::size_t number) {
    const ZoneView* view = zoneView();
    const platform::FontHandle font = view ? view->font : 0;
    const std::u16string text = core::displayText(std::to_string(number));
    platform::Size size{kHandleSize, kHandleSize};
    if (view && view->fonts) {
        size = view->fonts->measure(text, font);
    }
    canvas.drawText(text, boxAround(at, {size.width + 1, size.height + 1}), font, kNumberColor,
                    platform::TextAlign::center);
}

} // namespace

Point drawShape(platform::Canvas& canvas, std::span<const Point> points, bool active, Point origin,
                int selectedIndex) {
    const Point center = centerOf(points);
    const int count = static_cast<int>(points.size());
    const std::span<const Point> painted = points.first(std::min(points.size(), kMaxPaintedPoints));
    for (std::size_t i = 1; i < painted.size(); ++i) {
        canvas.drawLine(placed(painted[i - 1], origin), placed(painted[i], origin),
                        segmentColor(static_cast<int>(i) - 1 == selectedIndex, active));
    }
    if (count >= kMinimumOutline) {
        canvas.drawLine(placed(points.back(), origin), placed(points.front(), origin),
                        segmentColor(selectedIndex == count - 1, active));
        drawHandle(canvas, placed(center, origin), selectedIndex == count);
    }
    for (std::size_t i = 0; i < painted.size(); ++i) {
        const Point at = placed(painted[i], origin);
        drawHandle(canvas, at, static_cast<int>(i) == selectedIndex);
        drawNumber(canvas, at, i + 1);
    }
    return center;
}

} // namespace zone
