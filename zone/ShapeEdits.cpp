#include "zone/ShapeEdits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <utility>

#include "zone/ShapeGeometry.h"
#include "zone/ShapeRecord.h"
#include "zone/ShapeTrack.h"
#include "zone/Zone.h"

namespace zone {
namespace {

using platform::Point;
using Outline = std::span<const Point>;

/// Between two courses of a point, in display pixels, that are the same.
constexpr double kRounding = 1;

Points pointsOf(const Zone& zone, int frame) {
    const Outline held = zone.outline(frame);
    return {held.begin(), held.end()};
}

/// Calls for the frames of `range`, alike ones together.
template <class Call>
void forRuns(const Zone& zone, FrameRange range, Call call) {
    for (int frame = range.first; frame < range.end;) {
        const int end = std::min(zone.sameUntil(frame), range.end);
        call(frame, end - frame);
        frame = end;
    }
}

/// The frames of `range` with points that `points` gives for one of them.
template <class PointsAt>
ShapeStretch stretchOf(const Zone& zone, FrameRange range, PointsAt points) {
    ShapeStretch stretch(range.first);
    forRuns(zone, range,
            [&](int frame, int count) { stretch.add(points(frame), zone.isActive(frame), count); });
    return stretch;
}

FrameRange allOf(const Zone& zone) {
    return {0, zone.frameCount()};
}

/// As a straight blend, between two shapes of as many points.
void addBlend(ShapeStretch& stretch, const Zone& zone, const KeyShape& from, const KeyShape& to) {
    const KeyShape ends[] = {from, to};
    for (int frame = from.frame + 1; frame < to.frame; ++frame) {
        stretch.add(blended(ends, frame, BlendWay::straight), zone.isActive(frame));
    }
}

struct Place {
    double x;
    double y;
};

struct Edge {
    Point from;
    Point to;

    [[nodiscard]] Place way() const {
        return {static_cast<double>(to.x) - from.x, static_cast<double>(to.y) - from.y};
    }
};

/// From point number `first` to the next one.
Edge edgeOf(Outline points, std::size_t first) {
    return {points[first], points[(first + 1) % points.size()]};
}

/// A place beside an edge that goes with it wherever it moves and however it turns and grows.
class Beside {
public:
    Beside(const Edge& edge, Point at) {
        const Place way = edge.way();
        const Place offset = Edge{edge.from, at}.way();
        const double square = way.x * way.x + way.y * way.y;
        if (square > 0) {
            m_along = (offset.x * way.x + offset.y * way.y) / square;
            m_across = (offset.y * way.x - offset.x * way.y) / square;
        } else {
            m_offset = offset; // no length to measure by
        }
    }
    [[nodiscard]] Point on(const Edge& edge) const {
        const Place way = edge.way();
        return {roundedCoordinate(edge.from.x + m_offset.x + m_along * way.x - m_across * way.y),
                roundedCoordinate(edge.from.y + m_offset.y + m_along * way.y + m_across * way.x)};
    }

private:
    // In lengths of the edge, from its start; and pixels where it has none.
    double m_along = 0;
    double m_across = 0;
    Place m_offset{0, 0};
};

/// Moves each point to where `to` puts its distance from the middle of all.
template <class To>
void aboutMiddle(Points& points, To to) {
    if (points.empty()) {
        return;
    }
    Place middle{0, 0};
    for (const Point& point : points) {
        middle.x += point.x / static_cast<double>(points.size());
        middle.y += point.y / static_cast<double>(points.size());
    }
    for (Point& point : points) {
        const Place moved = to(Place{point.x - middle.x, point.y - middle.y});
        point = {roundedCoordinate(middle.x + moved.x), roundedCoordinate(middle.y + moved.y)};
    }
}

} // namespace

EditReach plainReach(const Zone& zone, int frame, bool carries) {
    return {frame, {frame, carries ? zone.frameCount() : frame + 1}, {}, carries};
}

EditReach fillReach(const Zone& zone, int frame, std::span<const int> keys, bool carries) {
    EditReach reach;
    reach.frame = frame;
    reach.keys = keysAround(keys, frame);
    if (!std::ranges::binary_search(reach.keys, frame)) {
        reach.keys.insert(std::ranges::upper_bound(reach.keys, frame), frame);
    }
    int end = zone.frameCount();
    if (const int next = reach.keys.back();
        next > frame && zone.outline(next).size() != zone.outline(frame).size()) {
        reach.keys.pop_back();
        end = next;
    }
    const bool isLast = reach.keys.back() == frame;
    reach.frames = {frame, isLast && carries ? end : frame + 1};
    return reach;
}

NewShapes reshaped(const Zone& zone, const EditReach& reach, const Reshape& reshape) {
    const auto reshapedAt = [&](int frame) {
        Points points = pointsOf(zone, frame);
        reshape(points);
        return points;
    };
    const Points edited = reshapedAt(reach.frame);
    const auto blends = [&](int key) {
        const int ends[] = {std::min(key, reach.frame), std::max(key, reach.frame)};
        return zone.outline(key).size() == edited.size() && canBlend(zone, ends);
    };
    const bool fromKey =
        !reach.keys.empty() && reach.keys.front() < reach.frame && blends(reach.keys.front());
    const bool toKey =
        !reach.keys.empty() && reach.keys.back() > reach.frame && blends(reach.keys.back());
    NewShapes result{ShapeStretch(fromKey ? reach.keys.front() : reach.frames.first), reach.frame};
    if (fromKey) {
        const int key = reach.keys.front();
        result.filled.push_back({key, reach.frame});
        result.stretch.add(zone.outline(key), zone.isActive(key));
        addBlend(result.stretch, zone, {key, zone.outline(key)}, {reach.frame, edited});
    }
    forRuns(zone, reach.frames, [&](int frame, int count) {
        result.stretch.add(reshapedAt(frame), zone.isActive(frame), count);
        const Outline before = zone.outline(frame);
        const bool isOwn = frame > reach.frame && !before.empty() &&
                           !std::ranges::equal(before, zone.outline(reach.frame));
        result.ownFrames += reach.isCarried && isOwn ? count : 0;
    });
    if (toKey) {
        const int key = reach.keys.back();
        result.filled.push_back({reach.frame, key});
        addBlend(result.stretch, zone, {reach.frame, edited}, {key, zone.outline(key)});
    }
    return result;
}

Reshape movedPoint(int index, Point to) {
    return [=](Points& points) {
        if (index >= 0 && static_cast<std::size_t>(index) < points.size()) {
            points[static_cast<std::size_t>(index)] = to;
        }
    };
}

Reshape shifted(Point delta) {
    return [=](Points& points) { shiftPoints(points, delta); };
}

Reshape scaled(double factor) {
    return [=](Points& points) {
        aboutMiddle(points, [&](Place at) { return Place{at.x * factor, at.y * factor}; });
    };
}

Reshape rotated(double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return [cosine = std::cos(angle), sine = std::sin(angle)](Points& points) {
        aboutMiddle(points, [&](Place at) {
            return Place{at.x * cosine - at.y * sine, at.x * sine + at.y * cosine};
        });
    };
}

Reshape replaced(Points shape) {
    return [shape = std::move(shape)](Points& points) { points = shape; };
}

NewShapes applied(const Zone& zone, int frame, FrameRange frames) {
    const Points shape = pointsOf(zone, frame);
    return {stretchOf(zone, frames, [&](int) -> const Points& { return shape; }), frame, frames};
}

NewShapes flagged(const Zone& zone, FrameRange frames, bool active, bool only) {
    const FrameRange changed = only ? allOf(zone) : frames;
    NewShapes result{ShapeStretch(changed.first)};
    for (const FrameRange part :
         {FrameRange{changed.first, frames.first}, frames, FrameRange{frames.end, changed.end}}) {
        const bool flag = part == frames ? active : !active;
        forRuns(zone, part, [&](int frame, int count) {
            result.stretch.add(zone.outline(frame), flag, count);
        });
    }
    return result;
}

std::vector<int> keysBeside(std::span<const int> keys, FrameRange range) {
    const auto behind = std::ranges::lower_bound(keys, range.end);
    const auto first = std::ranges::lower_bound(keys, range.first);
    if (first == keys.begin() || behind == keys.end()) {
        return {};
    }
    return {*std::prev(first), *behind};
}

std::optional<NewShapes> withoutKeys(const Zone& zone, std::span<const int> keys, FrameRange range,
                                     BlendWay way) {
    const auto behind = std::ranges::lower_bound(keys, range.end);
    const auto first = std::ranges::lower_bound(keys, range.first);
    const bool hasBefore = first != keys.begin();
    const bool hasBehind = behind != keys.end();
    if (hasBefore && hasBehind) {
        const std::vector<int> ends = keysBeside(keys, range);
        std::vector<int> left(keys.begin(), first);
        left.insert(left.end(), behind, keys.end());
        auto blend = blendedShapes(zone, ends, way, left);
        if (!blend) {
            return std::nullopt;
        }
        NewShapes result{std::move(*blend)};
        result.released = range;
        result.filled = blendedGaps(zone, ends);
        return result;
    }
    if (!hasBefore && !hasBehind) {
        return std::nullopt;
    }
    const int held = hasBefore ? *std::prev(first) : *behind;
    NewShapes result =
        applied(zone, held, hasBefore ? FrameRange{held, zone.frameCount()} : FrameRange{0, held});
    result.shapedFrame = -1;
    result.released = range;
    return result;
}

NewShapes withPointEverywhere(const Zone& zone, int frame, int index, Point at) {
    const auto first = static_cast<std::size_t>(index);
    const Beside place(edgeOf(zone.outline(frame), first), at);
    return {stretchOf(zone, allOf(zone), [&](int other) {
        Points points = pointsOf(zone, other);
        if (points.size() < kMaxPoints) {
            const bool hasEdge = first < points.size();
            points.insert(hasEdge ? points.begin() + index + 1 : points.end(),
                          hasEdge ? place.on(edgeOf(points, first)) : at);
        }
        return points;
    })};
}

int strayFrames(const Zone& zone, int frame, int index) {
    const auto number = static_cast<std::size_t>(index);
    const auto around = [&](Outline points) {
        const std::size_t count = points.size();
        return Edge{points[(number + count - 1) % count], points[(number + 1) % count]};
    };
    const Outline edited = zone.outline(frame);
    const Beside place(around(edited), edited[number]);
    int strays = 0;
    forRuns(zone, allOf(zone), [&](int other, int count) {
        const Outline points = zone.outline(other);
        if (number < points.size()) {
            const Point wanted = place.on(around(points));
            const Point held = points[number];
            const bool isNear = std::abs(static_cast<double>(held.x) - wanted.x) <= kRounding &&
                                std::abs(static_cast<double>(held.y) - wanted.y) <= kRounding;
            strays += isNear ? 0 : count;
        }
    });
    return strays;
}

NewShapes withoutPoint(const Zone& zone, int index) {
    return {stretchOf(zone, allOf(zone), [&](int frame) {
        Points points = pointsOf(zone, frame);
        if (index >= 0 && static_cast<std::size_t>(index) < points.size()) {
            points.erase(points.begin() + index);
        }
        return points;
    })};
}

bool holdsShapes(const Zone& zone, const ShapeStretch& stretch) {
    const ShapeTrack& shapes = stretch.shapes();
    const int first = stretch.frames().first;
    for (std::size_t index = 0; index < shapes.runCount(); ++index) {
        const ShapeRun& run = shapes.run(index);
        const int end = first + shapes.endFrame(index);
        for (int frame = first + run.firstFrame; frame < end; frame = zone.sameUntil(frame)) {
            if (zone.isActive(frame) != (run.active != 0) ||
                !std::ranges::equal(zone.outline(frame), shapes.points(index))) {
                return false;
            }
        }
    }
    return true;
}

int edgeAt(Outline points, Point at, double reach) {
    int found = -1;
    const std::size_t edges = points.size() < 2 ? 0 : points.size() == 2 ? 1 : points.size();
    for (std::size_t edge = 0; edge < edges; ++edge) {
        const Point from = points[edge];
        const Point to = points[(edge + 1) % points.size()];
        const double x = static_cast<double>(to.x) - from.x;
        const double y = static_cast<double>(to.y) - from.y;
        const double square = x * x + y * y;
        const double dx = static_cast<double>(at.x) - from.x;
        const double dy = static_cast<double>(at.y) - from.y;
        const double part = square > 0 ? std::clamp((dx * x + dy * y) / square, 0.0, 1.0) : 0;
        const double distance = std::hypot(dx - part * x, dy - part * y);
        if (distance <= reach) {
            reach = distance;
            found = static_cast<int>(edge);
        }
    }
    return found;
}

} // namespace zone
