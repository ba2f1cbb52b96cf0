#include "check/ZoneShapes.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

#include "zone/Zone.h"

namespace check {
namespace {

using platform::Point;
using platform::Size;

struct Segment {
    double x;
    double y;
    double dx;
    double dy;
};

Segment segment(const Point& from, const Point& to) {
    const double x = from.x;
    const double y = from.y;
    return {x, y, to.x - x, to.y - y};
}

/// Whether a part of the segment lies inside the picture (Liang and Barsky's clipping).
bool crosses(const Segment& line, double width, double height) {
    double first = 0.0;
    double last = 1.0;
    const double steps[] = {-line.dx, line.dx, -line.dy, line.dy};
    const double rooms[] = {line.x, width - line.x, line.y, height - line.y};
    for (std::size_t side = 0; side < std::size(steps); ++side) {
        if (steps[side] == 0.0) {
            if (rooms[side] <= 0.0) { // along an edge is outside
                return false;
            }
        } else if (steps[side] < 0.0) {
            first = std::max(first, rooms[side] / steps[side]);
        } else {
            last = std::min(last, rooms[side] / steps[side]);
        }
    }
    return first < last;
}

bool encloses(std::span<const Point> points, double x, double y) {
    bool isInside = false;
    for (std::size_t i = 0, before = points.size() - 1; i < points.size(); before = i++) {
        const Segment line = segment(points[i], points[before]);
        const bool spans = (line.y > y) != (line.y + line.dy > y);
        if (spans && x < line.x + (y - line.y) / line.dy * line.dx) {
            isInside = !isInside;
        }
    }
    return isInside;
}

} // namespace

bool isOutside(std::span<const Point> points, Size picture) {
    const double width = picture.width;
    const double height = picture.height;
    for (std::size_t i = 0, before = points.size() - 1; i < points.size(); before = i++) {
        if (crosses(segment(points[before], points[i]), width, height)) {
            return false;
        }
    }
    return !encloses(points, width / 2, height / 2);
}

ZoneFacts factsOf(const zone::Zone& zone, int frameCount, Size video) {
    const int stored = zone.frameCount();
    const int count = frameCount < 0 ? stored : frameCount;
    ZoneFacts facts{.name = zone.name(), .hasShapes = true, .storedFrames = stored};
    const Size picture{video.width * kPartsOfPixel, video.height * kPartsOfPixel};
    for (int frame = 0; frame < count;) {
        const bool isStored = frame < stored;
        int end = isStored ? zone.sameUntil(frame) : count;
        end = end >= stored ? count : std::min(end, count);
        // A frame without a shape is active.
        if (!isStored || zone.isActive(frame)) {
            const std::optional<std::span<const Point>> points = zone.points(frame);
            facts.activeFrames += end - frame;
            if (!points || points->size() < 3) {
                facts.fewPoints.add(frame, end);
            } else if (video.width > 0 && isOutside(*points, picture)) {
                facts.outside.add(frame, end);
            }
        }
        frame = end;
    }
    return facts;
}

} // namespace check
