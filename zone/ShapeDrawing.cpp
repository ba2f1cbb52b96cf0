#include "zone/ShapeDrawing.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/Text.h"
#include "platform/Color.h"
#include "platform/Path.h"
#include "zone/ShapeGeometry.h"

namespace zone {
namespace {

using platform::Color;
using platform::Point;
using platform::Rect;

constexpr Color kHandleOutline = platform::rgb(250, 0, 0);
constexpr Color kHandleFill = platform::rgb(255, 255, 255);
constexpr Color kSelectedFill = platform::rgb(255, 255, 0);
constexpr Color kNumberColor = platform::rgb(0, 0, 0);
constexpr Color kEdgeColor = 0x9914191F;
constexpr double kEdgedLine = 3;
constexpr double kHandleEdge = 1.5;
constexpr int kHandleSize = kHandleSide;
static_assert(kHandleSide == 2 * kHandleReach);
/// From a handle's middle to the end of the longest number, with room to spare.
constexpr int kDrawnReach = 40;

Color segmentColor(bool highlighted, bool active) {
    const unsigned strength = active ? 255 : 192;
    return platform::rgb(strength, highlighted ? strength : 0, 0);
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

void drawNumber(platform::Canvas& canvas, Point at, std::size_t number, NumberFont font) {
    const std::u16string text = core::displayText(std::to_string(number));
    platform::Size size{kHandleSize, kHandleSize};
    if (font.fonts) {
        size = font.fonts->measure(text, font.handle);
    }
    canvas.drawText(text, boxAround(at, {size.width + 1, size.height + 1}), font.handle,
                    kNumberColor, platform::TextAlign::center);
}

/// Covers one pixel more than a line on both sides, and a pixel and a half more than a handle.
void drawEdges(platform::Canvas& canvas, std::span<const Point> painted,
               const std::optional<Point>& last, const std::optional<Point>& center) {
    platform::Path lines;
    const auto middleOf = [](Point at) { return platform::PointF{at.x + 0.5, at.y + 0.5}; };
    lines.moveTo(last ? middleOf(*last) : middleOf(painted.front()));
    for (const Point& point : painted.subspan(last ? 0 : 1)) {
        lines.lineTo(middleOf(point));
    }
    canvas.fillPath(lines.stroked(kEdgedLine), kEdgeColor);
    const auto drawRound = [&](Point at) {
        platform::Path round;
        const double radius = kHandleReach + kHandleEdge;
        round.addRoundBox({at.x - radius, at.y - radius}, 2 * radius, 2 * radius, radius);
        canvas.fillPath(round, kEdgeColor);
    };
    std::for_each(painted.begin(), painted.end(), drawRound);
    if (center) {
        drawRound(*center);
    }
}

} // namespace

void drawShape(platform::Canvas& canvas, std::span<const Point> points, bool active,
               const Placement& place, int selectedIndex, NumberFont font, LineEdge edge) {
    const int count = static_cast<int>(points.size());
    std::vector<Point> painted;
    for (const Point& point : points.first(std::min(points.size(), kMaxPaintedPoints))) {
        painted.push_back(place(point));
    }
    const bool isOutline = count >= kMinimumOutline;
    if (edge == LineEdge::dark && !painted.empty()) {
        drawEdges(canvas, painted, isOutline ? std::optional(place(points.back())) : std::nullopt,
                  isOutline ? std::optional(place(shapeCenter(points))) : std::nullopt);
    }
    for (std::size_t i = 1; i < painted.size(); ++i) {
        canvas.drawLine(painted[i - 1], painted[i],
                        segmentColor(static_cast<int>(i) - 1 == selectedIndex, active));
    }
    if (isOutline) {
        canvas.drawLine(place(points.back()), painted.front(),
                        segmentColor(selectedIndex == count - 1, active));
        drawHandle(canvas, place(shapeCenter(points)), selectedIndex == count);
    }
    for (std::size_t i = 0; i < painted.size(); ++i) {
        drawHandle(canvas, painted[i], static_cast<int>(i) == selectedIndex);
        drawNumber(canvas, painted[i], i + 1, font);
    }
}

Rect drawnArea(std::span<const Point> points, const Placement& place) {
    if (points.empty()) {
        return {};
    }
    const Point center = place(shapeCenter(points));
    Rect area{center.x, center.y, center.x, center.y};
    const auto include = [&](const Point& point) {
        const Point at = place(point);
        area = {std::min(area.left, at.x), std::min(area.top, at.y), std::max(area.right, at.x),
                std::max(area.bottom, at.y)};
    };
    include(points.back());
    std::for_each_n(points.begin(), std::min(points.size(), kMaxPaintedPoints), include);
    return {area.left - kDrawnReach, area.top - kDrawnReach, area.right + kDrawnReach,
            area.bottom + kDrawnReach};
}

} // namespace zone
