// Follows what a polygon holds from picture to picture. Start here.
//
//   track::Follower follower(first, polygon);
//   for (each picture behind it, or each before it, from there backwards) {
//       const track::Step step = follower.follow(picture);
//       if (step.sight != track::Sight::kept) { break; }
//       use(step.shape);
//   }
//
// Each step is found twice: from the picture before, by corners that can be followed, and then
// against the appearance on a reference picture, which is the first one until the thing shows
// itself from another side or distance. So errors do not add up, and what comes in front of the
// thing is noticed instead of followed. Same pictures, same results. No threads of its own; one
// object may be used by one thread at a time.
#pragma once

#include <array>

#include "track/Appearance.h"
#include "track/Geometry.h"
#include "track/Picture.h"
#include "track/Samples.h"

namespace track {

enum class Sight {
    kept,
    covered, ///< something else is there, or the thing looks different now
    left,    ///< most of it is outside the picture
    plain    ///< there is nothing in it that could be followed
};

struct Step {
    Polygon shape; ///< where the thing is, or was seen last
    Sight sight = Sight::kept;
    /// Little of the thing agrees. When sight gets lost, the doubtful steps before are no good.
    bool isDoubtful = false;
    double match = 0;     ///< with the reference picture, 0 to 1
    double seen = 0;      ///< share of the thing that nothing is in front of
    double agreement = 0; ///< share of the corners that moved alike, 0 to 1; 0 without corners
};

class Follower {
public:
    /// The polygon has at least three corners, wherever they are.
    Follower(const GreyView& picture, const Polygon& polygon);

    /// The picture has the size of the first. After a sight other than kept, all steps say the
    /// same.
    Step follow(const GreyView& picture);

private:
    struct Motion {
        Warp warp; ///< from the picture before
        double agreement = 0;
    };

    [[nodiscard]] Motion fromBefore(Point shift) const;
    /// Where a motion would lead to, from the reference.
    [[nodiscard]] Warp expected(const Warp& motion) const;
    [[nodiscard]] Appearance::Found best(const Motion& motion, Point shift) const;
    [[nodiscard]] bool isLikely(const Warp& fromReference) const;
    /// Whether it lies where its last motion, or that of most corners, led to.
    [[nodiscard]] bool isSteady(const Warp& fromReference, const Motion& motion) const;
    [[nodiscard]] Sight judge(const Appearance::Found& found, bool isSteady);
    /// Of the parts that nothing has been in front of for some steps, as far as they are still
    /// there. 0: these are too few to tell.
    [[nodiscard]] double likenessOfOpen(const Match& match) const;
    /// Whether its size has changed lately in another way than the distances between its corners:
    /// the edge of what comes in front of a thing squeezes the appearance, but moves no corner.
    [[nodiscard]] bool isAstray(const Warp& fromReference, const Motion& motion);
    void noteCovered(const Match& match);
    void learn(const Appearance::Found& found);
    void renewReference(const Match& match);

    Polygon m_polygon; ///< as it was given
    Polygon m_first;   ///< its form
    Polygon m_shape;   ///< that, where it was seen last
    Pyramid m_before;
    Pyramid m_now;
    Appearance m_reference;
    Warp m_toReference; ///< from the first picture to the reference
    Warp m_toNow;       ///< from the first picture
    Warp m_last;        ///< the last motion
    double m_usual = 0; ///< likeness where all is well; less than 1 with noise
    double m_told = 0;  ///< by the reference, at its best
    Experience m_experience;
    /// Steps since something was in front of each part, at most those after which it counts.
    std::array<int, kBlocks> m_seenFor{};
    int m_steps = 0;
    int m_averaged = 0;  ///< pictures, with the reference
    int m_doubts = 0;    ///< in a row
    double m_astray = 0; ///< lately, as the logarithm of an area
    bool m_isAstray = false;
    Step m_step;
};

} // namespace track
