#include "track/Follower.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "track/Consensus.h"
#include "track/Corners.h"
#include "track/PointFlow.h"
#include "track/Samples.h"
#include "track/Shift.h"

namespace track {
namespace {

constexpr int kCorners = 60;
constexpr double kGrowth = 1.6;    ///< most change of the area from picture to picture
constexpr double kMostGrowth = 16; ///< and since the reference
constexpr double kGood = 0.8;      ///< of the usual likeness: no need to look elsewhere
constexpr double kSure = 0.95;     ///< of the usual likeness: no need to look at less of it
/// Of what a view is distorted by, which goes back where the picture says nothing about it.
constexpr double kStraightened = 0.03;
constexpr double kDoubtful = 0.5;   ///< of the usual likeness: gone when it lasts
constexpr double kCertain = 0.7;    ///< the same where it jumps, and until doubts are over
constexpr double kGone = 0.3;       ///< of the usual likeness
constexpr double kLeastSeen = 0.22; ///< of the thing, where the rest is hidden
constexpr double kVague = 0.08;     ///< of the radius: what is no more exact is no place
constexpr double kLeastTold = 0.3;  ///< of what it told at its best, for its likeness to count
constexpr int kOpen = 2; ///< steps after which a part counts as one with nothing in front
/// How far the rest may be from where it was expected: pixels, and a share of the diagonal.
constexpr double kJump = 2;
constexpr double kJumpShare = 0.01;
constexpr double kAgreeing = 0.5; ///< of the corners, which then tell where to expect it
constexpr double kAstray = 0.1;   ///< by the corners, as the logarithm of an area
constexpr double kLately = 0.8;   ///< share of it that is left after a step
constexpr int kMostDoubts = 3;    ///< steps in a row
constexpr double kLeastInside = 0.4;
constexpr double kLeastLikeness = 0.25; ///< of the first step, else nothing can be followed
constexpr int kLearning = 3;            ///< steps until the usual likeness is known
constexpr double kForgetting = 0.05;
/// Pictures behind a reference that are averaged with it: few, as all have to show it alike.
constexpr int kAveraged = 8;
constexpr float kTrusting = 0.25F;        ///< share of what the last step says about a sample
constexpr double kRenewed = 0.25;         ///< change of scale, as a logarithm, for a new reference
constexpr double kWhole = 0.85;           ///< of the thing seen, for a new reference
constexpr std::size_t kMostCorners = 256; ///< that are looked at of a polygon
constexpr double kFarthest = 100'000;     ///< pixels

/// What tells the form of a polygon, whatever a file holds.
Polygon formOf(const Polygon& polygon) {
    const std::size_t step = polygon.size() / (kMostCorners + 1) + 1;
    Polygon form;
    for (std::size_t i = 0; i < polygon.size(); i += step) {
        form.push_back({std::clamp(polygon[i].x, -kFarthest, kFarthest),
                        std::clamp(polygon[i].y, -kFarthest, kFarthest)});
    }
    return form;
}

} // namespace

Follower::Follower(const GreyView& picture, const Polygon& polygon)
    : m_polygon(polygon), m_first(formOf(polygon)), m_shape(m_first) {
    m_now.build(picture);
    m_reference = Appearance(m_now, m_first);
    m_step.shape = polygon;
    m_step.match = 1;
    m_seenFor.fill(kOpen);
    if (!m_reference.showsAnything()) {
        m_step.sight = Sight::plain;
    }
}

Step Follower::follow(const GreyView& picture) {
    if (m_step.sight != Sight::kept) {
        return m_step;
    }
    std::swap(m_before, m_now);
    m_now.build(picture);
    ++m_steps;
    const Point shift = findShift(m_before, m_now, m_shape);
    const Motion motion = fromBefore(shift);
    const Appearance::Found found = best(motion, shift);
    m_step.agreement = motion.agreement;
    m_step.seen = found.match.seen;
    m_step.match = std::min(1.0, found.match.likeness / std::max(m_usual, kLeastLikeness));
    m_step.sight = judge(found, isSteady(found.warp, motion));
    m_step.isDoubtful = isAstray(found.warp, motion) || m_step.isDoubtful;
    if (m_step.sight != Sight::kept) {
        return m_step;
    }
    const Warp before = m_toNow;
    m_toNow = found.warp * m_toReference;
    m_last = m_toNow * before.inverse();
    m_shape = warped(m_toNow, m_first);
    m_step.shape = warped(m_toNow, m_polygon);
    noteCovered(found.match);
    if (m_doubts == 0) {
        learn(found);
        if (m_averaged < kAveraged) {
            m_reference.average(m_now, found, ++m_averaged);
        }
        renewReference(found.match);
    }
    return m_step;
}

Follower::Motion Follower::fromBefore(Point shift) const {
    const Warp toReference = m_toReference * m_toNow.inverse();
    std::vector<Point> corners = findCorners(m_before, m_shape, kCorners);
    // What is in front of the thing must not lead away from it.
    std::erase_if(corners, [&](Point corner) {
        return m_experience.covered.test(m_reference.blockAt(toReference(corner)));
    });
    const Consensus consensus =
        findConsensus(followPoints(m_before, m_now, corners, Warp::translation(shift.x, shift.y)));
    if (consensus.inliers == 0 || !isPlausible(consensus.motion, m_shape, kGrowth)) {
        return {Warp::translation(shift.x, shift.y), 0};
    }
    return {consensus.motion,
            static_cast<double>(consensus.inliers) / static_cast<double>(corners.size())};
}

bool Follower::isLikely(const Warp& fromReference) const {
    const Warp before = m_toNow * m_toReference.inverse();
    return isPlausible(fromReference, warped(m_toReference, m_first), kMostGrowth) &&
           isPlausible(fromReference * before.inverse(), m_shape, kGrowth);
}

Warp Follower::expected(const Warp& motion) const {
    const Warp guess = motion * m_toNow * m_toReference.inverse();
    const Polygon polygon = warped(m_toReference, m_first);
    std::vector<PointPair> pairs;
    Point middle;
    for (const Point& corner : polygon) {
        pairs.push_back({corner, guess(corner)});
        middle.x += corner.x / static_cast<double>(polygon.size());
        middle.y += corner.y / static_cast<double>(polygon.size());
    }
    const Warp similarity = similarityOf(pairs);
    const double scale = guess.m[6] * middle.x + guess.m[7] * middle.y + guess.m[8];
    Warp result;
    for (std::size_t i = 0; i < result.m.size(); ++i) {
        result.m[i] = std::lerp(guess.m[i] / scale, similarity.m[i], kStraightened);
    }
    return result;
}

Appearance::Found Follower::best(const Motion& motion, Point shift) const {
    const std::array<Warp, 3> guesses{motion.warp, m_last, Warp::translation(shift.x, shift.y)};
    Appearance::Found best{.warp = expected(motion.warp)};
    for (const Warp& guess : guesses) {
        const Appearance::Found found = m_reference.find(m_now, expected(guess), m_experience);
        if (found.match.likeness > best.match.likeness && isLikely(found.warp)) {
            best = found;
        } else { // what is not there may still lie within the picture
            best.match.inside = std::max(best.match.inside, found.match.inside);
        }
        if (best.match.likeness > kGood * std::max(m_usual, kLeastLikeness)) {
            break;
        }
    }
    if (best.match.likeness < kSure * std::max(m_usual, kLeastLikeness)) {
        Experience inner = m_experience;
        inner.isInnerOnly = true;
        Appearance::Found found = m_reference.find(m_now, expected(m_last), inner);
        if (found.match.likeness > best.match.likeness && isLikely(found.warp)) {
            return found;
        }
    }
    return best;
}

bool Follower::isSteady(const Warp& fromReference, const Motion& motion) const {
    const Polygon polygon = warped(m_toReference, m_first);
    const Box box = boundsOf(m_shape);
    const double reach = kJump + kJumpShare * std::hypot(box.width(), box.height());
    const auto isNear = [&](const Warp& other) {
        return std::ranges::all_of(polygon, [&](Point corner) {
            const Point one = fromReference(corner);
            const Point two = other(corner);
            return std::hypot(one.x - two.x, one.y - two.y) <= reach;
        });
    };
    return isNear(expected(m_last)) ||
           (motion.agreement >= kAgreeing && isNear(expected(motion.warp)));
}

bool Follower::isAstray(const Warp& fromReference, const Motion& motion) {
    m_astray *= kLately;
    if (motion.agreement >= kAgreeing) {
        const Box box = boundsOf(m_shape);
        const Polygon before{{box.left, box.top},
                             {box.right, box.top},
                             {box.right, box.bottom},
                             {box.left, box.bottom}};
        const Warp step = fromReference * m_toReference * m_toNow.inverse();
        const double apart =
            std::log(signedArea(warped(step, before)) / signedArea(warped(motion.warp, before)));
        m_astray += std::isfinite(apart) ? apart : 0; // a shape may be a line
    }
    // What went astray counts again once it agrees well.
    m_isAstray = std::abs(m_astray) > kAstray || (m_isAstray && m_step.match < kGood);
    return m_isAstray;
}

Sight Follower::judge(const Appearance::Found& found, bool isSteady) {
    const Match& match = found.match;
    const bool isVague = found.spread > kVague;
    if (match.inside < kLeastInside) {
        return Sight::left;
    }
    if (m_steps == 1 && (isVague || match.likeness < kLeastLikeness)) {
        return Sight::plain;
    }
    const double usual = std::max(m_usual, kLeastLikeness);
    const double open = isSteady ? likenessOfOpen(match) : 0;
    // What shows next to nothing is like everything.
    const double telling = m_told > 0 ? std::min(1.0, match.told / (kLeastTold * m_told)) : 1;
    const double share = std::max(match.likeness, open) / usual * telling;
    const bool jumped = !isSteady && share < kCertain;
    const bool isUnlike = share < (m_doubts > 0 ? kCertain : kDoubtful);
    m_doubts = isVague || isUnlike ? m_doubts + 1 : 0;
    m_step.isDoubtful = m_doubts > 0 || jumped;
    return m_steps > 1 && (share < kGone || m_doubts >= kMostDoubts) ? Sight::covered : Sight::kept;
}

double Follower::likenessOfOpen(const Match& match) const {
    double agreed = 0;
    double open = 0;
    double all = 0;
    for (std::size_t i = 0; i < kBlocks; ++i) {
        all += match.possible[i];
        if (m_seenFor[i] >= kOpen && !match.covered.test(i)) {
            agreed += match.agreed[i];
            open += match.possible[i];
        }
    }
    return open > kLeastSeen * all && open > 0 ? agreed / open : 0;
}

void Follower::noteCovered(const Match& match) {
    const bool isSure = match.likeness > kGood * m_usual;
    for (std::size_t i = 0; i < kBlocks; ++i) {
        const int before = isSure ? kOpen : m_seenFor[i];
        m_seenFor[i] = match.covered.test(i) ? 0 : std::min(kOpen, before + 1);
    }
}

void Follower::learn(const Appearance::Found& found) {
    m_experience.covered = found.match.covered;
    m_experience.trust.resize(found.agreed.size());
    for (std::size_t layer = 0; layer < found.agreed.size(); ++layer) {
        std::vector<float>& trust = m_experience.trust[layer];
        trust.resize(found.agreed[layer].size(), 1.0F);
        for (std::size_t i = 0; i < trust.size(); ++i) {
            trust[i] += kTrusting * (found.agreed[layer][i] - trust[i]);
        }
    }
    m_experience.gain = found.gain;
    m_told = std::max(m_told, found.match.told);
    const auto towards = [](double& usual, double now) { usual += kForgetting * (now - usual); };
    if (m_steps == 1) {
        m_usual = found.match.likeness;
        m_experience.noise = found.noise;
        m_experience.comparedNoise = found.comparedNoise;
    } else if (m_steps <= kLearning) {
        m_usual = std::max(m_usual, found.match.likeness);
        m_experience.noise = std::max(m_experience.noise, found.noise);
        m_experience.comparedNoise = std::max(m_experience.comparedNoise, found.comparedNoise);
    } else if (found.match.likeness > kGood * m_usual) {
        towards(m_usual, found.match.likeness);
        towards(m_experience.noise, found.noise);
        towards(m_experience.comparedNoise, found.comparedNoise);
    }
}

void Follower::renewReference(const Match& match) {
    const double before = signedArea(warped(m_toReference, m_first));
    const double scale = std::sqrt(signedArea(m_shape) / before);
    if (std::abs(std::log(scale)) < kRenewed || match.seen < kWhole || match.inside < 0.95) {
        return;
    }
    Appearance renewed(m_now, m_shape);
    if (renewed.showsAnything()) {
        m_reference = std::move(renewed);
        m_toReference = m_toNow;
        m_averaged = 0;
        m_experience.covered.reset();
        m_experience.gain = 1;
        m_told = 0;
        m_seenFor.fill(kOpen);
        m_experience.trust.clear();
    }
}

} // namespace track
