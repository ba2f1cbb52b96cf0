// What a thing looks like on one frame: found again, exactly, near where it is expected on others,
// and compared with what is there. Everything with a gradient counts, so straight edges and soft
// shading hold the shape where there are no corners.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "track/Geometry.h"
#include "track/Picture.h"
#include "track/Samples.h"

namespace track {

/// How well a picture agrees with an appearance.
struct Match {
    double likeness = 0; ///< 1: all of it is there; 0: as much as on any picture
    double seen = 0;     ///< share of its parts that are there
    /// For each part, in samples' worth: how much of it is there, and how much there could be.
    std::array<double, kBlocks> agreed{};
    std::array<double, kBlocks> possible{};
    double told = 0;   ///< share of its places that would differ on any other picture
    double inside = 0; ///< share of it that lies in the picture
    Blocks covered;    ///< the parts that are not there
};

using Trust = std::vector<std::vector<float>>;

/// What earlier comparisons have shown.
struct Experience {
    /// Usual differences in grey values, on the finest layer and on the one that is compared.
    /// What differs by several times as much is something else.
    double noise = std::numeric_limits<double>::infinity();
    double comparedNoise = std::numeric_limits<double>::infinity();
    double gain = 1; ///< of the grey values, which change little from picture to picture
    Blocks covered;  ///< parts that were not there
    /// How well each sample of each layer has agreed lately, from 0 to 1: ground in the band around
    /// the thing, which moves in another way, soon counts no more. Empty: all agree.
    Trust trust;
    /// Looks at what is well inside the outline alone: steep ground in the band around soft
    /// things would draw them along.
    bool isInnerOnly = false;
};

class Appearance {
public:
    /// Nothing, until taken.
    Appearance() = default;
    /// Of what `polygon` holds, and of a narrow band around it.
    Appearance(const Pyramid& picture, const Polygon& polygon);

    /// Whether it shows enough to be found again.
    [[nodiscard]] bool showsAnything() const { return !m_layers.empty(); }
    /// The part at a place of the appearance's own picture.
    [[nodiscard]] std::size_t blockAt(Point at) const { return m_frame.blockAt(at); }

    struct Found {
        Warp warp; ///< from the appearance's picture to the other one
        Match match{};
        double noise = 0; ///< as in Experience
        double comparedNoise = 0;
        double gain = 1;
        Trust agreed{}; ///< this time, from 0 to 1; 0 for samples outside the picture
        /// Standard deviation of its rim, as a share of the radius: what few or flat samples leave
        /// open however well they agree.
        double spread = 0;
    };
    /// Looks for the thing from `guess` on, which stays where the picture says nothing else.
    ///
    /// Gauss-Newton steps over the eight parameters of a projective map together with gain and
    /// offset of the grey values: Baker and Matthews, "Lucas-Kanade 20 Years On", Int. J. Computer
    /// Vision 56, 2004. What does not fit (things in front, background in the band) loses weight as
    /// in Geman and McClure, "Statistical Methods for Tomographic Image Reconstruction", 1987. A
    /// Gaussian prior around the guess lets turns, stretches and perspective change only as far
    /// as the grey values say so: Bishop, "Pattern Recognition and Machine Learning", 3.3.
    [[nodiscard]] Found find(const Pyramid& picture, const Warp& guess,
                             const Experience& experience) const;

    /// Averages the values with what a later picture shows where the thing was found, so that they
    /// hold less noise. `count`: of these pictures until now, this one included.
    void average(const Pyramid& picture, const Found& found, int count);

private:
    /// State of one search.
    struct Fit {
        Warp warp;
        double gain = 1;
        double expectedGain = 1; ///< give or take its freedom
        double gainFreedom = 0.5;
        double leastGain = 0;
        double mostGain = 0;
        double offset = 0; ///< the grey value where the appearance has its mean
        double noise = 0;
        Motions moved{};   ///< from the guess
        double spread = 0; ///< in pixels
    };

    /// How far a motion may lie from the guess, in pixels.
    [[nodiscard]] double freedomOf(std::size_t motion) const;
    /// False when too little of the thing is in the picture.
    bool refine(const Pyramid& picture, std::size_t layer, const Experience& experience,
                Fit& fit) const;
    /// Whether there was anything to improve.
    bool step(const Seen& seen, const std::vector<float>& weights, double stillness,
              Fit& fit) const;
    [[nodiscard]] Trust agreement(const Pyramid& picture, const Fit& fit) const;
    void compare(const Pyramid& picture, const Fit& fit, const Experience& experience,
                 Found& found) const;

    Frame m_frame;
    std::vector<Layer> m_layers; ///< the coarsest first
    std::size_t m_compared = 0;  ///< the layer that is compared
};

} // namespace track
