// Which frames before the current one to decode next, so that a step back finds its picture ready
// even while steps follow each other as fast as a held key repeats. Counts in frames: no clock, no
// thread, no decoder.
#pragma once

#include <cstdint>

#include "src/Theora/PlaneCache.h"

namespace theora {

class StepBackPlan {
public:
    /// `cache` outlives it. longestGroup: how far apart the clip's keyframes can be.
    StepBackPlan(const PlaneCache& cache, std::int64_t firstFrame, std::int64_t longestGroup);

    /// The frame to decode to, from the keyframe before it, while `frame` is on show; -1 when
    /// enough of them are ready.
    [[nodiscard]] std::int64_t goalBelow(std::int64_t frame);
    /// On the way to a goal, `frame` was decoded.
    void passed(std::int64_t frame);
    /// The display went elsewhere.
    void reset() { m_isFilling = false; }

    /// How many pictures before a distant frame are worth keeping on the way to it.
    [[nodiscard]] static std::int64_t keptBefore(const PlaneCache& cache,
                                                 std::int64_t longestGroup);

private:
    const PlaneCache& m_cache;
    const std::int64_t m_firstFrame;
    const std::int64_t m_window;    ///< frames below the current one
    const std::int64_t m_enough;    ///< with no more of them ready, decoding has to begin
    bool m_isFilling = false;       ///< until the window is full
    bool m_isNewPass = false;       ///< nothing was decoded yet
    std::int64_t m_passedFrom = -1; ///< where the last pass began; -1: nowhere
};

} // namespace theora
