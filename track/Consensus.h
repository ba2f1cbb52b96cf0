// One motion that most of the followed points agree on.
#pragma once

#include <vector>

#include "track/Geometry.h"
#include "track/PointFlow.h"

namespace track {

struct Consensus {
    Warp motion;
    int inliers = 0; ///< points that agree with it; 0: there is no such motion
};

/// A similarity by random samples of two points (Fischler and Bolles, "Random Sample Consensus",
/// Communications of the ACM 24, 1981) and least squares over those within 1.5 pixels of it; an
/// affine map where many of them, spread out, agree clearly better with that; the mean shift where
/// they are few or close together. The same points always give the same motion.
[[nodiscard]] Consensus findConsensus(const std::vector<PointPair>& pairs);

/// The similarity that comes nearest to the pairs; their mean shift where all are at one place.
/// Umeyama, "Least-Squares Estimation of Transformation Parameters", IEEE PAMI 13, 1991.
[[nodiscard]] Warp similarityOf(const std::vector<PointPair>& pairs);

} // namespace track
