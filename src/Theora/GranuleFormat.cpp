#include "src/Theora/GranuleFormat.h"

#include <algorithm>

namespace theora {
namespace {

// Damaged positions: above any real clip, low enough that sums of frame numbers cannot overflow.
constexpr std::int64_t kHighest = std::int64_t{1} << 40U;

bool countsFromOne(const th_info& info) {
    if (info.version_major != 3) {
        return info.version_major > 3;
    }
    return info.version_minor > 2 || (info.version_minor == 2 && info.version_subminor >= 1);
}

} // namespace

GranuleFormat::GranuleFormat(const th_info& info)
    : m_shift(info.keyframe_granule_shift), m_offset(countsFromOne(info) ? -1 : 0) {}

std::int64_t GranuleFormat::frameOf(std::int64_t granule) const {
    const std::int64_t keyframe = granule >> m_shift;
    return std::min(keyframe + (granule - (keyframe << m_shift)), kHighest) + m_offset;
}

std::int64_t GranuleFormat::keyframeOf(std::int64_t granule) const {
    return std::min(granule >> m_shift, kHighest) + m_offset;
}

} // namespace theora
