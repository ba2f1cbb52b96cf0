#include "track/Consensus.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <optional>
#include <random>

#include "track/Equations.h"

namespace track {
namespace {

constexpr int kSamples = 80;
constexpr double kAgrees = 1.5;
constexpr double kLeastBase = 5; ///< between the two points of a sample
constexpr std::size_t kLeastPoints = 3;
constexpr std::size_t kLeastForTurns = 6;
constexpr double kLeastSpread = 6; ///< of the points, for turns and scales
constexpr std::size_t kLeastForAffine = 20;
constexpr double kLeastSpreadForAffine = 15;
constexpr double kAffineGain =
    0.8; ///< of the squared distances that an affine map must leave at most

double squaredDistance(const Warp& motion, const PointPair& pair) {
    const Point to = motion(pair.from);
    return (to.x - pair.to.x) * (to.x - pair.to.x) + (to.y - pair.to.y) * (to.y - pair.to.y);
}

std::vector<PointPair> agreeing(const std::vector<PointPair>& pairs, const Warp& motion) {
    std::vector<PointPair> result;
    std::ranges::copy_if(pairs, std::back_inserter(result), [&](const PointPair& pair) {
        return squaredDistance(motion, pair) < kAgrees * kAgrees;
    });
    return result;
}

/// What the points have in common, taken out before fitting.
struct Centres {
    Point from;
    Point to;
    double spread = 0; ///< root of the mean squared distance from `from`

    explicit Centres(const std::vector<PointPair>& pairs) {
        const double share = 1 / static_cast<double>(pairs.size());
        for (const PointPair& pair : pairs) {
            from = {from.x + pair.from.x * share, from.y + pair.from.y * share};
            to = {to.x + pair.to.x * share, to.y + pair.to.y * share};
        }
        for (const PointPair& pair : pairs) {
            spread += std::pow(std::hypot(pair.from.x - from.x, pair.from.y - from.y), 2) * share;
        }
        spread = std::sqrt(spread);
    }

    [[nodiscard]] Warp motion(double xx, double xy, double yx, double yy) const {
        return {{xx, xy, to.x - xx * from.x - xy * from.y, yx, yy, to.y - yx * from.x - yy * from.y,
                 0, 0, 1}};
    }
};

/// In the plane complex numbers give it directly.
Warp fitSimilarity(const std::vector<PointPair>& pairs, const Centres& centres) {
    double norm = 0;
    double even = 0;
    double odd = 0;
    for (const PointPair& pair : pairs) {
        const double x = pair.from.x - centres.from.x;
        const double y = pair.from.y - centres.from.y;
        const double u = pair.to.x - centres.to.x;
        const double v = pair.to.y - centres.to.y;
        norm += x * x + y * y;
        even += x * u + y * v;
        odd += x * v - y * u;
    }
    return norm > 0 ? centres.motion(even / norm, -odd / norm, odd / norm, even / norm)
                    : centres.motion(1, 0, 0, 1);
}

std::optional<Warp> fitAffine(const std::vector<PointPair>& pairs, const Centres& centres) {
    Equations<2> along;
    Equations<2> down;
    for (const PointPair& pair : pairs) {
        const std::array<double, 2> row{pair.from.x - centres.from.x, pair.from.y - centres.from.y};
        along.add(row, pair.to.x - centres.to.x, 1);
        down.add(row, pair.to.y - centres.to.y, 1);
    }
    if (!along.solve() || !down.solve()) {
        return std::nullopt;
    }
    return centres.motion(along.right[0], along.right[1], down.right[0], down.right[1]);
}

double sumOfSquares(const std::vector<PointPair>& pairs, const Warp& motion) {
    double sum = 0;
    for (const PointPair& pair : pairs) {
        sum += squaredDistance(motion, pair);
    }
    return sum;
}

Warp fit(const std::vector<PointPair>& pairs) {
    const Centres centres(pairs);
    if (pairs.size() < kLeastForTurns || centres.spread < kLeastSpread) {
        return centres.motion(1, 0, 0, 1);
    }
    const Warp similarity = fitSimilarity(pairs, centres);
    if (pairs.size() >= kLeastForAffine && centres.spread >= kLeastSpreadForAffine) {
        const std::optional<Warp> affine = fitAffine(pairs, centres);
        if (affine &&
            sumOfSquares(pairs, *affine) < kAffineGain * sumOfSquares(pairs, similarity)) {
            return *affine;
        }
    }
    return similarity;
}

} // namespace

Warp similarityOf(const std::vector<PointPair>& pairs) {
    return fitSimilarity(pairs, Centres(pairs));
}

Consensus findConsensus(const std::vector<PointPair>& pairs) {
    if (pairs.size() < kLeastPoints) {
        return {};
    }
    std::minstd_rand random; // the same sequence each time
    const auto draw = [&] { return pairs[random() % pairs.size()]; };
    std::vector<PointPair> best;
    for (int i = 0; i < kSamples; ++i) {
        const std::vector<PointPair> two{draw(), draw()};
        const Centres centres(two);
        std::vector<PointPair> all =
            agreeing(pairs, 2 * centres.spread < kLeastBase ? centres.motion(1, 0, 0, 1)
                                                            : fitSimilarity(two, centres));
        if (all.size() > best.size()) {
            best.swap(all);
        }
    }
    if (best.size() < kLeastPoints) {
        return {};
    }
    const std::vector<PointPair> refined = agreeing(pairs, fit(best));
    if (refined.size() < kLeastPoints) {
        return {};
    }
    return {fit(refined), static_cast<int>(refined.size())};
}

} // namespace track
