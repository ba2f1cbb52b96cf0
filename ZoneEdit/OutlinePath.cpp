#include "ZoneEdit/OutlinePath.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "zone/ShapeDrawing.h"

namespace zoneedit {
namespace {

using platform::PointF;

/// The part of a line inside an area, as shares of the line; none: it passes by.
struct Part {
    double from = 0;
    double to = 1;
};

std::optional<Part> partInside(PointF a, PointF b, const platform::Rect& area) {
    Part part;
    const auto cut = [&part](double start, double step, double low, double high) {
        if (step == 0) {
            return start >= low && start <= high;
        }
        const double first = (low - start) / step;
        const double second = (high - start) / step;
        part.from = std::max(part.from, std::min(first, second));
        part.to = std::min(part.to, std::max(first, second));
        return part.from < part.to;
    };
    const bool isInside =
        cut(a.x, b.x - a.x, area.left, area.right) && cut(a.y, b.y - a.y, area.top, area.bottom);
    return isInside ? std::optional(part) : std::nullopt;
}

/// The dashes of one line inside `area`: points may lie far outside of any window.
void addDashes(platform::Path& path, PointF a, PointF b, Dashes dashes,
               const platform::Rect& area) {
    const std::optional<Part> part = partInside(a, b, area);
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (!part || length <= 0) {
        return;
    }
    const auto at = [&](double way) {
        return PointF{a.x + (b.x - a.x) * way / length, a.y + (b.y - a.y) * way / length};
    };
    const double period = dashes.drawn + dashes.left;
    double way = std::floor(part->from * length / period) * period;
    for (; way < part->to * length; way += period) {
        path.moveTo(at(way));
        path.lineTo(at(std::min(way + dashes.drawn, length)));
    }
}

} // namespace

platform::Path outlinePath(std::span<const platform::Point> points, const video::PictureView& view,
                           const platform::Rect& clip, double width, std::optional<Dashes> dashes) {
    platform::Path path;
    const auto place = [&view](platform::Point point) {
        const platform::Point at = view.toWindow(point);
        return PointF{at.x + 0.5, at.y + 0.5};
    };
    const std::size_t count = std::min(points.size(), zone::kMaxPaintedPoints);
    const platform::Rect area{clip.left - 2, clip.top - 2, clip.right + 2, clip.bottom + 2};
    for (std::size_t i = 0; i < count && count > 1; ++i) {
        const PointF from = place(points[i]);
        const PointF to = place(points[(i + 1) % count]);
        if (dashes) {
            addDashes(path, from, to, *dashes, area);
        } else {
            i == 0 ? path.moveTo(from) : path.lineTo(from);
        }
    }
    if (!dashes && count > 1) {
        path.close();
    }
    return path.stroked(width);
}

platform::Color outlineColor(int number) {
    static constexpr std::array<platform::Color, 6> kColors{0xFF35D07F, 0xFF4DA3FF, 0xFFC58CFF,
                                                            0xFFFF9F40, 0xFF26C6DA, 0xFFFF7AC6};
    return kColors.at(static_cast<std::size_t>(number) % kColors.size());
}

platform::Color zoneColor(int zone, int edited) {
    return zone == edited ? kEditedColor
                          : outlineColor(edited >= 0 && zone > edited ? zone - 1 : zone);
}

} // namespace zoneedit
