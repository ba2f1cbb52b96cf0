#include "zone/PointMatching.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <queue>
#include <utility>
#include <vector>

#include "platform/Geometry.h"
#include "zone/ShapeBlend.h"
#include "zone/ShapeGeometry.h"
#include "zone/ShapeStretch.h"
#include "zone/Zone.h"

namespace zone {
namespace {

using platform::Point;
using Outline = std::span<const Point>;

/// A piece of an edge, in parts of its length.
struct Piece {
    double length; ///< in pixels
    std::size_t edge;
    double from;
    double to;

    [[nodiscard]] double middle() const { return (from + to) / 2; }
    /// Whether it is halved later than another: the longest first, of equal ones the largest part
    /// of an edge, then the one in front.
    bool operator<(const Piece& other) const {
        if (length != other.length) {
            return length < other.length;
        }
        const double part = to - from;
        const double otherPart = other.to - other.from;
        return part != otherPart ? part < otherPart : edge > other.edge;
    }
};

/// Where new points go.
struct NewPoint {
    std::size_t edge;
    double part; ///< of the edge's length, from its start
};

/// Halves the longest piece of all edges `count` times. In the order of the outline.
std::vector<NewPoint> halvedEdges(Outline points, std::size_t count) {
    std::priority_queue<Piece> pieces;
    for (std::size_t edge = 0; edge < points.size(); ++edge) {
        const Point from = points[edge];
        const Point to = points[(edge + 1) % points.size()];
        const double length =
            std::hypot(static_cast<double>(to.x) - from.x, static_cast<double>(to.y) - from.y);
        pieces.push({length, edge, 0, 1});
    }
    std::vector<NewPoint> made;
    made.reserve(count);
    while (made.size() < count) {
        const Piece piece = pieces.top();
        pieces.pop();
        made.push_back({piece.edge, piece.middle()});
        pieces.push({piece.length / 2, piece.edge, piece.from, piece.middle()});
        pieces.push({piece.length / 2, piece.edge, piece.middle(), piece.to});
    }
    std::ranges::sort(made, [](const NewPoint& one, const NewPoint& other) {
        return one.edge != other.edge ? one.edge < other.edge : one.part < other.part;
    });
    return made;
}

std::vector<Point> withPoints(Outline points, std::span<const NewPoint> made) {
    std::vector<Point> all;
    all.reserve(points.size() + made.size());
    auto next = made.begin();
    for (std::size_t edge = 0; edge < points.size(); ++edge) {
        const Point from = points[edge];
        const Point to = points[(edge + 1) % points.size()];
        all.push_back(from);
        for (; next != made.end() && next->edge == edge; ++next) {
            const auto between = [part = next->part](int start, int end) {
                return roundedCoordinate(start + (static_cast<double>(end) - start) * part);
            };
            all.push_back({between(from.x, to.x), between(from.y, to.y)});
        }
    }
    return all;
}

/// The frames around one that have as many points.
FrameRange alikeAround(const Zone& zone, int frame) {
    const std::size_t count = zone.outline(frame).size();
    const auto isAlike = [&](int at) { return zone.outline(at).size() == count; };
    FrameRange range{frame, frame + 1};
    while (range.first > 0 && isAlike(range.first - 1)) {
        --range.first;
    }
    while (range.end < zone.frameCount() && isAlike(range.end)) {
        ++range.end;
    }
    return range;
}

} // namespace

std::optional<NewShapes> matched(const Zone& zone, std::span<const int> keys) {
    std::size_t most = 0;
    for (const int key : keys) {
        most = std::max(most, zone.outline(key).size());
    }
    std::optional<ShapeStretch> stretch;
    int done = 0; // frames before this one are in the stretch or need nothing
    std::size_t points = 0;
    for (const int key : keys) {
        const std::size_t few = zone.outline(key).size();
        if (few == 0) {
            return std::nullopt;
        }
        if (few == most || key < done) {
            continue;
        }
        const FrameRange range = alikeAround(zone, key);
        if (!stretch) {
            stretch.emplace(range.first);
            done = range.first;
        }
        const std::vector<NewPoint> made = halvedEdges(zone.outline(key), most - few);
        while (done < range.end) {
            const Outline held = zone.outline(done);
            const int end =
                std::min(zone.sameUntil(done), done < range.first ? range.first : range.end);
            const std::vector<Point> shape = done < range.first
                                                 ? std::vector<Point>(held.begin(), held.end())
                                                 : withPoints(held, made);
            points += shape.size();
            if (points > kMaxEditedPoints) {
                return std::nullopt;
            }
            stretch->add(shape, zone.isActive(done), end - done);
            done = end;
        }
    }
    if (!stretch) {
        return std::nullopt;
    }
    return NewShapes{std::move(*stretch)};
}

} // namespace zone
