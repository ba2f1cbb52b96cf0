#include "ZoneEdit/FollowLayer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "video/PictureView.h"

namespace zoneedit {
namespace {

using platform::Point;

constexpr platform::Color kLine = platform::rgb(27, 107, 60);
constexpr platform::Color kStripe = platform::rgb(255, 255, 255);
constexpr double kDash = 6;
constexpr int kWidth = 3;
/// Points lie inside the picture, which may be shown much larger.
constexpr double kLongest = 20'000;

void drawEdge(platform::Canvas& canvas, Point from, Point to) {
    const double x = static_cast<double>(to.x) - from.x;
    const double y = static_cast<double>(to.y) - from.y;
    const double whole = std::max(std::hypot(x, y), 1.0);
    // Across the direction of the line, for its width.
    const Point across = std::abs(x) > std::abs(y) ? Point{0, 1} : Point{1, 0};
    const auto at = [&](double distance, int shift) {
        return Point{
            static_cast<int>(std::lround(from.x + x * distance / whole)) + shift * across.x,
            static_cast<int>(std::lround(from.y + y * distance / whole)) + shift * across.y};
    };
    for (int shift = -kWidth / 2; shift <= kWidth / 2; ++shift) {
        canvas.drawLine(at(0, shift), at(whole, shift), kLine);
        for (double begin = 0; begin < std::min(whole, kLongest); begin += 2 * kDash) {
            canvas.drawLine(at(begin, shift), at(std::min(begin + kDash, whole), shift), kStripe);
        }
    }
}

} // namespace

void FollowLayer::paint(platform::Canvas& canvas, const video::PictureView& view, int frame) {
    const auto found = m_shapes.find(frame);
    if (found == m_shapes.end()) {
        return;
    }
    const zone::Points& points = found->second;
    for (std::size_t i = 0; i < points.size(); ++i) { // not many: see FollowPresenter
        drawEdge(canvas, view.toWindow(points[i]), view.toWindow(points[(i + 1) % points.size()]));
    }
}

platform::Rect FollowLayer::area(const video::PictureView& view, int frame) const {
    const auto found = m_shapes.find(frame);
    if (found == m_shapes.end() || found->second.empty()) {
        return {};
    }
    const Point first = view.toWindow(found->second.front());
    platform::Rect area{first.x, first.y, first.x, first.y};
    for (const Point& point : found->second) {
        const Point at = view.toWindow(point);
        area = {std::min(area.left, at.x), std::min(area.top, at.y), std::max(area.right, at.x),
                std::max(area.bottom, at.y)};
    }
    return {area.left - kWidth, area.top - kWidth, area.right + kWidth, area.bottom + kWidth};
}

} // namespace zoneedit
