#include "track/BothEnds.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace track {
namespace {

/// `share` of b and the rest of a.
Polygon mixed(const Polygon& a, const Polygon& b, double share) {
    if (a.size() != b.size()) {
        return share < 0.5 ? a : b;
    }
    Polygon result(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        result[i] = {std::lerp(a[i].x, b[i].x, share), std::lerp(a[i].y, b[i].y, share)};
    }
    return result;
}

} // namespace

std::vector<std::optional<Polygon>> joinBothEnds(const std::vector<Polygon>& forward,
                                                 const std::vector<Polygon>& backward, int count) {
    const int there = std::min(count, static_cast<int>(forward.size()));
    const int back = count - std::min(count, static_cast<int>(backward.size()));
    std::vector<std::optional<Polygon>> shapes(static_cast<std::size_t>(std::max(0, count)));
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const auto fromEnd = static_cast<std::size_t>(count - 1 - i);
        if (i < there && i >= back) { // frames `back` to `there` - 1 have both
            const double share = (i - back + 1.0) / (there - back + 1.0);
            shapes[at] = mixed(forward[at], backward[fromEnd], share);
        } else if (i < there) {
            shapes[at] = forward[at];
        } else if (i >= back) {
            shapes[at] = backward[fromEnd];
        }
    }
    return shapes;
}

} // namespace track
