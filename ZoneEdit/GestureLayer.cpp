#include "ZoneEdit/GestureLayer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "video/PictureView.h"
#include "zone/ShapeDrawing.h"

namespace zoneedit {
namespace {

using platform::Point;

constexpr platform::Color kBefore = platform::rgb(255, 255, 255);
constexpr platform::Color kDrawn = platform::rgb(255, 0, 0);
constexpr double kDash = 4;
/// A shape may reach far out of the picture; its dashes are drawn near it only.
constexpr double kLongest = 20'000;

void drawDashes(platform::Canvas& canvas, Point from, Point to) {
    const double x = static_cast<double>(to.x) - from.x;
    const double y = static_cast<double>(to.y) - from.y;
    const double length = std::min(std::hypot(x, y), kLongest);
    const double whole = std::max(std::hypot(x, y), 1.0);
    const auto at = [&](double distance) {
        return Point{static_cast<int>(std::lround(from.x + x * distance / whole)),
                     static_cast<int>(std::lround(from.y + y * distance / whole))};
    };
    for (double begin = 0; begin < length; begin += 2 * kDash) {
        canvas.drawLine(at(begin), at(std::min(begin + kDash, length)), kBefore);
    }
}

} // namespace

void GestureLayer::paint(platform::Canvas& canvas, const video::PictureView& view, int /*frame*/) {
    const auto forEdges = [&](const zone::Points& points, auto draw) {
        const std::size_t shown = std::min(points.size(), zone::kMaxPaintedPoints);
        for (std::size_t index = 0; index < shown; ++index) {
            draw(view.toWindow(points[index]), view.toWindow(points[(index + 1) % shown]));
        }
    };
    forEdges(m_before, [&](Point from, Point to) { drawDashes(canvas, from, to); });
    forEdges(m_drawn, [&](Point from, Point to) { canvas.drawLine(from, to, kDrawn); });
}

platform::Rect GestureLayer::area(const video::PictureView& view, int /*frame*/) const {
    platform::Rect area;
    bool isFirst = true;
    for (const zone::Points* points : {&m_before, &m_drawn}) {
        for (const Point& point : *points) {
            const Point at = view.toWindow(point);
            const platform::Rect pixel{at.x, at.y, at.x + 1, at.y + 1};
            area = isFirst ? pixel
                           : platform::Rect{std::min(area.left, pixel.left),
                                            std::min(area.top, pixel.top),
                                            std::max(area.right, pixel.right),
                                            std::max(area.bottom, pixel.bottom)};
            isFirst = false;
        }
    }
    return area;
}

} // namespace zoneedit
