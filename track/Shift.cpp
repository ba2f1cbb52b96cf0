#include "track/Shift.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace track {
namespace {

constexpr int kReach = 12;
constexpr double kLeastSide = 12; ///< of the thing on the level that is searched
constexpr double kMostSamples = 400;
constexpr double kNearness = 0.002; ///< penalty for a pixel: of equals, the nearest wins

struct Spot {
    int x = 0;
    int y = 0;
    float value = 0;
};

std::vector<Spot> spotsOf(const Plane& plane, int level, const Polygon& polygon) {
    const Box box = boundsOf(polygon);
    const auto pixel = [](double value, int size) {
        return static_cast<int>(std::clamp<double>(value, 0, size - 1));
    };
    const Point from = Pyramid::toLevel({box.left, box.top}, level);
    const Point to = Pyramid::toLevel({box.right, box.bottom}, level);
    const int left = pixel(std::ceil(from.x), plane.width());
    const int top = pixel(std::ceil(from.y), plane.height());
    const int right = pixel(std::floor(to.x), plane.width());
    const int bottom = pixel(std::floor(to.y), plane.height());
    const double area = static_cast<double>(right - left + 1) * (bottom - top + 1);
    const int step = std::max(1, static_cast<int>(std::ceil(std::sqrt(area / kMostSamples))));
    std::vector<Spot> spots;
    for (int y = top; y <= bottom; y += step) {
        for (int x = left; x <= right; x += step) {
            if (contains(polygon, Pyramid::fromLevel(
                                      {static_cast<double>(x), static_cast<double>(y)}, level))) {
                spots.push_back({x, y, plane.row(y)[x]});
            }
        }
    }
    return spots;
}

/// The mean of the squared differences, less what a change of brightness alone makes; negative
/// where too much would lie outside.
double difference(const Plane& plane, const std::vector<Spot>& spots, int dx, int dy) {
    float sum = 0;
    float squares = 0;
    int count = 0;
    for (const Spot& spot : spots) {
        const int x = spot.x + dx;
        const int y = spot.y + dy;
        if (x >= 0 && y >= 0 && x < plane.width() && y < plane.height()) {
            const float d = plane.row(y)[x] - spot.value;
            sum += d;
            squares += d * d;
            ++count;
        }
    }
    if (2 * count < static_cast<int>(spots.size())) {
        return -1;
    }
    const auto n = static_cast<float>(count);
    return static_cast<double>(squares / n - (sum / n) * (sum / n));
}

} // namespace

Point findShift(const Pyramid& from, const Pyramid& to, const Polygon& polygon) {
    const Box box = boundsOf(polygon);
    int level = 0;
    while (level + 1 < from.levels() &&
           std::min(box.width(), box.height()) >= kLeastSide * Pyramid::step(level + 1)) {
        ++level;
    }
    level = std::max(level, std::min(1, from.levels() - 1));
    const std::vector<Spot> spots = spotsOf(from.level(level), level, polygon);
    if (spots.empty()) {
        return {};
    }
    double least = -1;
    Point best;
    for (int dy = -kReach; dy <= kReach; ++dy) {
        for (int dx = -kReach; dx <= kReach; ++dx) {
            const double found = difference(to.level(level), spots, dx, dy);
            const double cost = (found + 1) * (1 + kNearness * std::hypot(dx, dy));
            if (found >= 0 && (least < 0 || cost < least)) {
                least = cost;
                best = {dx * Pyramid::step(level), dy * Pyramid::step(level)};
            }
        }
    }
    return best;
}

} // namespace track
