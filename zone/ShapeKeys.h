// The keys of a zone: the frames from which linear blending gives the shapes of all others. They
// are found in the shapes and stored nowhere. For whoever shows them, jumps to them or fills the
// frames between them. One thread at a time.
//
// Frame 0 is a key. From each key, the next one is the last frame up to which blending gives the
// points of every frame in between, each coordinate within one display pixel: the next frame would
// be the first for which that no longer holds. Each frame whose active flag or number of points
// differs from the frame before is a key, too; points are not blended across frames of different
// numbers of points. The last frame always is one. A frame without a shape counts as an active one
// without points.
#pragma once

#include <optional>
#include <set>
#include <vector>

#include "zone/ShapeStretch.h"

namespace zone {

class Zone;

class ShapeKeys {
public:
    /// Finds all keys. The work grows with the runs of equal shapes and with their points, not
    /// with the frames: some milliseconds for an hour of video that differs on every frame.
    void compute(const Zone& zone);
    /// After a change of the shapes of `changed`: as compute(), but looks at these frames alone and
    /// at those beside them whose keys depend on them.
    void update(const Zone& zone, FrameRange changed);

    /// Ascending; empty for a zone without frames.
    [[nodiscard]] const std::vector<int>& frames() const { return m_frames; }
    [[nodiscard]] bool contains(int frame) const;
    /// The key nearest to `frame` before it, or behind it.
    [[nodiscard]] std::optional<int> before(int frame) const;
    [[nodiscard]] std::optional<int> after(int frame) const;
    /// The keys when those of `fixed` are keys in any case: from each, the next one is found anew.
    [[nodiscard]] std::vector<int> through(const Zone& zone, const std::set<int>& fixed) const;

private:
    std::vector<int> m_frames;
};

/// The same of the points alone: changes of the active flag make no key.
[[nodiscard]] std::vector<int> courseKeys(const Zone& zone, const std::set<int>& fixed);

/// The frames that have a shape and on which it is active, as few runs as can be, ascending.
[[nodiscard]] std::vector<FrameRange> activeRuns(const Zone& zone);

} // namespace zone
