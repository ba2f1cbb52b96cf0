// What one step does to the set of frames that an author has shaped, kept as the frames that join
// or leave it: a copy of the set for each step would fill the history of a long session. This
// module's sources only.
#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "zone/ShapeStretch.h"

namespace zone {

struct ShapedFrames {
    int joins = -1; ///< -1 for none
    /// These leave, except the one that joins.
    FrameRange leave = {};
    /// These were followed.
    FrameRange followed = {};
    /// These were blended; see FilledGaps.
    std::vector<FrameRange> filled = {};

    [[nodiscard]] bool tellsFollowed() const { return followed.count() > 0 || leave.count() > 0; }

    bool operator==(const ShapedFrames&) const = default;
};

class ShapedFramesChange {
public:
    /// Works out what `wanted` changes in `frames` without changing them. May throw.
    void prepare(const std::set<int>& frames, const ShapedFrames& wanted);
    /// Makes the change, or takes it back, in turns.
    void swap(std::set<int>& frames) noexcept;
    [[nodiscard]] std::size_t bytes() const;

private:
    std::vector<int> m_changed;
    std::set<int> m_away; ///< those that are not in the set now, whose memory is needed again
};

} // namespace zone
