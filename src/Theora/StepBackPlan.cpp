#include "src/Theora/StepBackPlan.h"

#include <algorithm>

namespace theora {
namespace {

constexpr std::int64_t kMaxWindow =
    256; // frames; with small pictures the cache could hold far more
// On the way to a distant frame, copying all pictures would add noticeably to decoding.
constexpr std::int64_t kLeastKept = 12;

/// The steps of a held key while a group of so many frames is decoded: ten a second, and 15 ms for
/// a frame, which is slow.
std::int64_t stepsDuring(std::int64_t groupFrames) {
    return groupFrames * 3 / 20;
}

/// The frames below the one on show that a plan cares for.
std::int64_t windowOf(const PlaneCache& cache) {
    return std::min<std::int64_t>(cache.behind(), kMaxWindow);
}

} // namespace

// A whole group must be decoded, which pays off only when much of the window is empty. Right after
// a jump too few are ready, so that the window is filled at once.
StepBackPlan::StepBackPlan(const PlaneCache& cache, std::int64_t firstFrame,
                           std::int64_t longestGroup)
    : m_cache(cache), m_firstFrame(firstFrame), m_window(windowOf(cache)),
      m_enough(std::clamp(stepsDuring(longestGroup), m_window / 2, m_window * 3 / 4)) {}

std::int64_t StepBackPlan::keptBefore(const PlaneCache& cache, std::int64_t longestGroup) {
    return std::max(kLeastKept, std::min(stepsDuring(longestGroup), windowOf(cache) * 3 / 4) - 1);
}

std::int64_t StepBackPlan::goalBelow(std::int64_t frame) {
    const std::int64_t lowest = std::max(frame - m_window, m_firstFrame);
    const std::int64_t missing = m_cache.firstMissingBelow(frame, lowest);
    // Steps taken meanwhile have moved the window down over frames that the last pass had already
    // left behind. To decode their group again at once, for so few, would never end.
    const bool wasPassed = m_passedFrom >= 0 && missing >= m_passedFrom;
    m_passedFrom = -1;
    m_isFilling = m_isFilling && !wasPassed;
    if (missing < lowest) { // or the cache's window has moved on with playback
        m_isFilling = false;
        return -1;
    }
    if (!m_isFilling && frame - missing > m_enough) {
        return -1;
    }
    m_isFilling = true;
    m_isNewPass = true;
    return missing;
}

void StepBackPlan::passed(std::int64_t frame) {
    if (m_isNewPass) {
        m_passedFrom = frame;
        m_isNewPass = false;
    }
}

} // namespace theora
