#include "zone/ShapeBlend.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "zone/EditContext.h"
#include "zone/ShapeGeometry.h"
#include "zone/Zone.h"

namespace zone {
namespace {

using platform::Point;

/// One coordinate of one point at the keys around a gap: at the two ends, and at the keys in front
/// of and behind them where there are such.
struct Course {
    double at[4];
    double frame[4];
    bool hasBefore;
    bool hasBehind;

    [[nodiscard]] double slope(int from) const {
        return (at[from + 1] - at[from]) / (frame[from + 1] - frame[from]);
    }
    /// In value per frame at key 1 or 2, so that the course stays between the keys of the gap.
    [[nodiscard]] double tangent(int key) const {
        const double gap = slope(1);
        const bool hasOther = key == 1 ? hasBefore : hasBehind;
        if (!hasOther) {
            return gap;
        }
        const double other = slope(key == 1 ? 0 : 2);
        if (gap * other <= 0) {
            return 0; // it turns or stands still here
        }
        const double through = (at[key + 1] - at[key - 1]) / (frame[key + 1] - frame[key - 1]);
        const double most = 3 * std::min(std::abs(gap), std::abs(other));
        return std::clamp(through, -most, most);
    }
    [[nodiscard]] double smooth(double when) const {
        const double length = frame[2] - frame[1];
        const double t = (when - frame[1]) / length;
        const double t2 = t * t;
        const double t3 = t2 * t;
        return (2 * t3 - 3 * t2 + 1) * at[1] + (t3 - 2 * t2 + t) * length * tangent(1) +
               (3 * t2 - 2 * t3) * at[2] + (t3 - t2) * length * tangent(2);
    }
};

Course courseOf(std::span<const KeyShape> keys, std::size_t gap, std::size_t point,
                int Point::*side) {
    Course course{{}, {}, gap > 0, gap + 2 < keys.size()};
    for (std::size_t i = 0; i < 4; ++i) {
        const bool isThere = gap + i >= 1 && gap + i <= keys.size();
        const KeyShape& key = keys[isThere ? gap + i - 1 : gap];
        course.at[i] = key.points[point].*side;
        course.frame[i] = key.frame;
    }
    return course;
}

/// Of keys that somebody sets by hand, in frames: to either side if they stand closer.
constexpr int kLeastDistance = 5;

bool isSame(const Zone& zone, int one, int other) {
    return std::ranges::equal(zone.outline(one), zone.outline(other));
}

/// The frames from `start` to `last`, each between two of the keys or on one. The shapes of all
/// keys have as many points.
void addBlends(ShapeStretch& stretch, const Zone& zone, std::span<const int> keys, BlendWay way,
               int start, int last) {
    std::vector<KeyShape> shapes;
    for (const int key : keys) {
        shapes.push_back({key, zone.outline(key)});
    }
    std::size_t gap = 0;
    for (int frame = start; frame <= last; ++frame) {
        gap += gap + 2 < keys.size() && frame >= keys[gap + 1] ? 1 : 0;
        // What a key has to know of others are its neighbours.
        const std::size_t first = gap > 0 ? gap - 1 : 0;
        const std::size_t count = std::min(gap + 3, keys.size()) - first;
        stretch.add(blended(std::span(shapes).subspan(first, count), frame, way),
                    zone.isActive(frame));
    }
}

} // namespace

std::vector<Point> blended(std::span<const KeyShape> keys, int frame, BlendWay way) {
    const auto after = std::upper_bound(keys.begin(), keys.end(), frame,
                                        [](int at, const KeyShape& key) { return at < key.frame; });
    const auto gap =
        static_cast<std::size_t>(std::max<std::ptrdiff_t>(after - keys.begin(), 1)) - 1;
    const KeyShape& from = keys[gap];
    std::vector<Point> points(from.points.begin(), from.points.end());
    if (after == keys.end() || from.frame >= frame) {
        return points;
    }
    const KeyShape& to = *after;
    const double part = static_cast<double>(frame - from.frame) / (to.frame - from.frame);
    for (std::size_t index = 0; index < points.size(); ++index) {
        for (int Point::*side : {&Point::x, &Point::y}) {
            const double start = from.points[index].*side;
            const double end = to.points[index].*side;
            points[index].*side =
                roundedCoordinate(way == BlendWay::straight || start == end
                                      ? start + (end - start) * part
                                      : courseOf(keys, gap, index, side).smooth(frame));
        }
    }
    return points;
}

std::optional<std::pair<int, int>> unequalKeys(const Zone& zone, std::span<const int> keys) {
    for (std::size_t index = 1; index < keys.size(); ++index) {
        const std::size_t before = zone.outline(keys[index - 1]).size();
        const std::size_t behind = zone.outline(keys[index]).size();
        if (before != behind) {
            return std::pair(static_cast<int>(before), static_cast<int>(behind));
        }
    }
    return std::nullopt;
}

bool canBlend(const Zone& zone, std::span<const int> keys) {
    std::size_t points = 0;
    for (std::size_t index = 1; index < keys.size() && points <= kMaxEditedPoints; ++index) {
        const auto frames = static_cast<std::size_t>(keys[index] - keys[index - 1]);
        if (!isSame(zone, keys[index - 1], keys[index])) { // else one shape does for all
            points += zone.outline(keys[index - 1]).size() * frames;
        }
    }
    return points <= kMaxEditedPoints;
}

std::optional<ShapeStretch> blendedShapes(const Zone& zone, std::span<const int> keys, BlendWay way,
                                          std::span<const int> all) {
    if (keys.size() < 2 || unequalKeys(zone, keys) || !canBlend(zone, keys)) {
        return std::nullopt;
    }
    std::vector<int> course(keys.begin(), keys.end());
    const auto isAlike = [&](int key) {
        return zone.outline(key).size() == zone.outline(keys.front()).size();
    };
    const auto next = std::ranges::upper_bound(all, keys.back());
    if (next != all.end() && isAlike(*next)) {
        course.push_back(*next);
    }
    const auto first = std::ranges::lower_bound(all, keys.front());
    if (first != all.begin() && isAlike(*std::prev(first))) {
        course.insert(course.begin(), *std::prev(first));
    }
    ShapeStretch stretch(keys.front());
    addBlends(stretch, zone, course, way, keys.front(), keys.back());
    return stretch;
}

ShapeStretch filledGaps(const Zone& zone, std::span<const int> keys, BlendWay way) {
    ShapeStretch stretch(keys.front());
    for (std::size_t first = 0; first < keys.size();) {
        const std::size_t points = zone.outline(keys[first]).size();
        std::size_t end = first + 1;
        while (end < keys.size() && zone.outline(keys[end]).size() == points) {
            ++end;
        }
        addBlends(stretch, zone, keys.subspan(first, end - first), way, keys[first], keys[end - 1]);
        for (int frame = keys[end - 1] + 1; end < keys.size() && frame < keys[end]; ++frame) {
            stretch.add(zone.outline(frame), zone.isActive(frame));
        }
        first = end;
    }
    return stretch;
}

std::vector<FrameRange> blendedGaps(const Zone& zone, std::span<const int> keys) {
    std::vector<FrameRange> gaps;
    for (std::size_t index = 1; index < keys.size(); ++index) {
        const FrameRange gap{keys[index - 1], keys[index]};
        if (zone.outline(gap.first).size() == zone.outline(gap.end).size()) {
            gaps.push_back(gap);
        }
    }
    return gaps;
}

std::vector<int> authoredKeys(const Zone& zone, std::span<const int> keys,
                              const std::set<int>& shaped) {
    std::vector<int> all(keys.begin(), keys.end());
    const auto isKey = [&](std::size_t index) {
        const int frame = all[index];
        if (shaped.contains(frame)) {
            return true;
        }
        const bool hasBefore = index > 0;
        const bool hasNext = index + 1 < all.size();
        const bool jumpsNext = hasNext && all[index + 1] == frame + 1;
        const bool jumpedHere = hasBefore && all[index - 1] == frame - 1;
        // The last frame that holds the key before it.
        if (hasBefore && (jumpsNext || !hasNext) && isSame(zone, all[index - 1], frame)) {
            return false;
        }
        // What the first frame held as well, before that one alone was shaped.
        if (jumpedHere && frame == 1 && shaped.contains(0) &&
            zone.outline(0).size() == zone.outline(1).size()) {
            return false;
        }
        // Back to what was held in front of a single other frame.
        return !(jumpedHere && index > 1 && all[index - 2] == frame - 2 &&
                 isSame(zone, frame - 2, frame) && !isSame(zone, frame - 1, frame));
    };
    std::vector<int> found;
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (isKey(index)) {
            found.push_back(all[index]);
        }
    }
    std::vector<int> both;
    std::set_union(found.begin(), found.end(), shaped.begin(), shaped.end(),
                   std::back_inserter(both));
    std::erase_if(both, [&](int frame) { return frame < 0 || frame >= zone.frameCount(); });
    return both;
}

std::vector<int> keysSetByHand(std::span<const int> authored, const std::set<int>& shaped,
                               std::span<const FollowedFrames> followed) {
    const auto isClose = [&](std::size_t one, std::size_t other) {
        return authored[other] - authored[one] < kLeastDistance &&
               !shaped.contains(authored[one]) && !shaped.contains(authored[other]);
    };
    std::vector<int> set;
    for (std::size_t index = 0; index < authored.size(); ++index) {
        const int key = authored[index];
        const auto last =
            std::find_if(followed.rbegin(), followed.rend(), [key](const FollowedFrames& stretch) {
                return stretch.frames.contains(key);
            });
        const bool isCrowded = index > 1 && index + 2 < authored.size() &&
                               isClose(index - 2, index - 1) && isClose(index - 1, index) &&
                               isClose(index, index + 1) && isClose(index + 1, index + 2);
        const bool isFollowed = last != followed.rend() ? last->isFollowed : isCrowded;
        if (shaped.contains(key) || !isFollowed) {
            set.push_back(key);
        }
    }
    return set;
}

std::vector<int> keysAround(std::span<const int> keys, int frame) {
    std::vector<int> around;
    const auto at = std::lower_bound(keys.begin(), keys.end(), frame);
    if (at != keys.begin()) {
        around.push_back(*std::prev(at));
    }
    for (auto next = at; next != keys.end(); ++next) {
        around.push_back(*next);
        if (*next != frame) {
            break;
        }
    }
    return around;
}

} // namespace zone
