#include "zone/ShapeKeys.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <span>

#include "platform/Geometry.h"
#include "zone/ShapeStretch.h"
#include "zone/ShapeTrack.h"
#include "zone/Zone.h"

namespace zone {
namespace {

using platform::Point;

/// Files hold any coordinate: beyond this they are cut, so that products stay within 64 bits.
constexpr std::int64_t kFarthest = std::int64_t{1} << 29;
constexpr std::int64_t kTolerance = 1;

/// Pixels per frame, `frames` above 0.
struct Slope {
    std::int64_t pixels = 0;
    std::int64_t frames = 1;

    [[nodiscard]] bool isBelow(const Slope& other) const {
        return pixels * other.frames < other.pixels * frames;
    }
};

/// The straight lines from one coordinate of a key that pass all frames seen so far closely enough.
class Cone {
public:
    explicit Cone(int start) : m_start(cut(start)) {}

    /// How many frames behind the key a line may end at most that ends at `value`, which the frames
    /// from `first` on have. Below `first`: it may not even end there.
    [[nodiscard]] std::int64_t reach(int value, std::int64_t first) const {
        const std::int64_t way = cut(value) - m_start;
        if (m_isOpen) {
            return reachOver(way, first);
        }
        const Slope line{way, first};
        if (line.isBelow(m_lowest) || m_highest.isBelow(line)) {
            return first - 1;
        }
        // Ending later, the line gets flatter, until it leaves the cone on the flat side.
        std::int64_t last = reachOver(way, first);
        if (way > 0 && m_lowest.pixels > 0) {
            last = std::min(last, way * m_lowest.frames / m_lowest.pixels);
        } else if (way < 0 && m_highest.pixels < 0) {
            last = std::min(last, way * m_highest.frames / m_highest.pixels);
        }
        return last;
    }
    /// The frames from `first` to `last` behind the key have `value`.
    void pass(int value, std::int64_t first, std::int64_t last) {
        const std::int64_t low = cut(value) - m_start - kTolerance;
        const std::int64_t high = low + 2 * kTolerance;
        const Slope lowest{low, low > 0 ? first : last};
        const Slope highest{high, high > 0 ? last : first};
        if (m_isOpen || m_lowest.isBelow(lowest)) {
            m_lowest = lowest;
        }
        if (m_isOpen || highest.isBelow(m_highest)) {
            m_highest = highest;
        }
        m_isOpen = false;
    }

private:
    [[nodiscard]] static std::int64_t cut(int value) {
        return std::clamp<std::int64_t>(value, -kFarthest, kFarthest);
    }
    /// By the frames of the same value alone: the first of them is the farthest from the line.
    [[nodiscard]] static std::int64_t reachOver(std::int64_t way, std::int64_t first) {
        const std::int64_t distance = way < 0 ? -way : way;
        return distance > kTolerance ? distance * first / (distance - kTolerance)
                                     : std::numeric_limits<std::int64_t>::max();
    }

    std::int64_t m_start;
    Slope m_lowest;
    Slope m_highest;
    bool m_isOpen = true; ///< no frame has been passed yet
};

/// Goes from key to key.
class KeyWalk {
public:
    explicit KeyWalk(const ShapeTrack& track, bool heedsFlags = true)
        : m_track(track), m_heedsFlags(heedsFlags) {}

    /// The key behind the key `key`, at most `end`; the frame count behind the last frame.
    [[nodiscard]] int next(int key, int end = std::numeric_limits<int>::max()) {
        return std::min(find(key, end), end);
    }

private:
    /// The same, but may go beyond `limit`.
    [[nodiscard]] int find(int key, int limit) {
        std::size_t run = m_track.indexOf(key);
        start(run);
        // The rest of the key's own run lies on a line that stands still.
        pass(run, key, key + 1, m_track.endFrame(run));
        while (++run < m_track.runCount()) {
            const int first = m_track.run(run).firstFrame;
            if (first > limit) {
                return limit;
            }
            if (m_track.points(run).size() != m_track.points(run - 1).size()) {
                return first - 1 > key ? first - 1 : first;
            }
            const int last = reach(run, key);
            if (last < first) {
                return last;
            }
            if (m_heedsFlags && isActive(run) != isActive(run - 1)) {
                return first;
            }
            const int end = m_track.endFrame(run);
            if (last + 1 < end) {
                return last;
            }
            pass(run, key, first, end);
        }
        const int lastFrame = m_track.frameCount() - 1;
        return key < lastFrame ? lastFrame : m_track.frameCount();
    }
    [[nodiscard]] bool isActive(std::size_t run) const {
        return !m_track.run(run).present || m_track.run(run).active;
    }
    void start(std::size_t run) {
        m_cones.clear();
        for (const Point& point : m_track.points(run)) {
            m_cones.emplace_back(point.x);
            m_cones.emplace_back(point.y);
        }
    }
    /// The last frame of the run that the next key may be; one before the run for none.
    [[nodiscard]] int reach(std::size_t run, int key) const {
        const std::int64_t first = m_track.run(run).firstFrame - key;
        std::int64_t last = m_track.endFrame(run) - key - 1;
        auto cone = m_cones.begin();
        for (const Point& point : m_track.points(run)) {
            last = std::min(last, (cone++)->reach(point.x, first));
            last = std::min(last, (cone++)->reach(point.y, first));
            if (last < first) {
                break;
            }
        }
        return key + static_cast<int>(std::max(last, first - 1));
    }
    void pass(std::size_t run, int key, int first, int end) {
        if (first >= end) {
            return;
        }
        auto cone = m_cones.begin();
        for (const Point& point : m_track.points(run)) {
            (cone++)->pass(point.x, first - key, end - 1 - key);
            (cone++)->pass(point.y, first - key, end - 1 - key);
        }
    }

    const ShapeTrack& m_track;
    bool m_heedsFlags;
    std::vector<Cone> m_cones;
};

/// Those of `fixed` and the ones that the walk finds between them. From a frame that is among
/// `known` on, these are what it would find.
std::vector<int> keysThrough(KeyWalk walk, int frameCount, const std::set<int>& fixed,
                             const std::vector<int>& known) {
    std::vector<int> keys;
    auto from = known.begin();
    for (int key = 0; key < frameCount;) {
        const auto next = fixed.upper_bound(key);
        const int end = next != fixed.end() ? std::min(*next, frameCount) : frameCount;
        from = std::lower_bound(from, known.end(), key);
        if (from != known.end() && *from == key) {
            keys.insert(keys.end(), from, std::lower_bound(from, known.end(), end));
            key = end;
        } else {
            keys.push_back(key);
            key = walk.next(key, end);
        }
    }
    return keys;
}

} // namespace

std::vector<FrameRange> activeRuns(const Zone& zone) {
    const ShapeTrack& track = zone.track();
    std::vector<FrameRange> runs;
    for (std::size_t index = 0; index < track.runCount(); ++index) {
        const ShapeRun& run = track.run(index);
        if (!run.present || !run.active) {
            continue;
        }
        if (!runs.empty() && runs.back().end == run.firstFrame) {
            runs.back().end = track.endFrame(index);
        } else {
            runs.push_back({run.firstFrame, track.endFrame(index)});
        }
    }
    return runs;
}

void ShapeKeys::compute(const Zone& zone) {
    m_frames.clear();
    update(zone, {0, zone.frameCount()});
}

void ShapeKeys::update(const Zone& zone, FrameRange changed) {
    // A key depends on the frames up to the one behind it.
    const auto kept = std::lower_bound(m_frames.begin(), m_frames.end(), changed.first - 1);
    const auto same = std::lower_bound(kept, m_frames.end(), changed.end);
    const std::vector<int> later(same, m_frames.end());
    m_frames.erase(kept, m_frames.end());
    const int count = zone.frameCount();
    KeyWalk walk(zone.track());
    int key = m_frames.empty() ? 0 : walk.next(m_frames.back());
    for (auto old = later.begin(); key < count; key = walk.next(key)) {
        old = std::lower_bound(old, later.end(), key);
        if (old != later.end() && *old == key) {
            m_frames.insert(m_frames.end(), old, later.end());
            return;
        }
        m_frames.push_back(key);
    }
}

bool ShapeKeys::contains(int frame) const {
    return std::binary_search(m_frames.begin(), m_frames.end(), frame);
}

std::vector<int> ShapeKeys::through(const Zone& zone, const std::set<int>& fixed) const {
    return keysThrough(KeyWalk(zone.track()), zone.frameCount(), fixed, m_frames);
}

std::vector<int> courseKeys(const Zone& zone, const std::set<int>& fixed) {
    return keysThrough(KeyWalk(zone.track(), false), zone.frameCount(), fixed, {});
}

std::optional<int> ShapeKeys::before(int frame) const {
    const auto found = std::lower_bound(m_frames.begin(), m_frames.end(), frame);
    return found != m_frames.begin() ? std::optional(*std::prev(found)) : std::nullopt;
}

std::optional<int> ShapeKeys::after(int frame) const {
    const auto found = std::upper_bound(m_frames.begin(), m_frames.end(), frame);
    return found != m_frames.end() ? std::optional(*found) : std::nullopt;
}

} // namespace zone
