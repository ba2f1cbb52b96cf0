// The places that an appearance is made of. The tracker's own sources only.
#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <vector>

#include "track/Geometry.h"
#include "track/Picture.h"

namespace track {

/// Ways a thing can move, in pixels at its rim: along, down; scale, turn; two stretches; two
/// perspectives.
inline constexpr std::size_t kMotions = 8;
using Motions = std::array<double, kMotions>;

/// Parts of the thing, row by row in its bounding box, that can be covered one by one.
inline constexpr int kBlocksAcross = 6;
inline constexpr std::size_t kBlocks = std::size_t{kBlocksAcross} * kBlocksAcross;
using Blocks = std::bitset<kBlocks>;

/// The circle that a thing's motions refer to.
struct Frame {
    Box box;
    Point centre;
    double radius = 1;

    explicit Frame(const Polygon& polygon);
    Frame() = default;
    /// The block at a place; places outside belong to the nearest.
    [[nodiscard]] std::size_t blockAt(Point at) const;
    [[nodiscard]] Warp warpOf(const Motions& pixels) const;
};

struct Sample {
    Point at;        ///< on level 0
    float value = 0; ///< grey, relative to the layer's mean
    std::size_t block = 0;
    /// Grey values by which it may differ because it is not exactly there: steep edges must not let
    /// go for that.
    float slack = 0;
    bool isInner = false; ///< well inside the polygon, where nothing of the ground can be
    std::array<float, kMotions> change{}; ///< of the value for a pixel of each motion
};

struct Layer {
    int level = 0;
    std::vector<Sample> samples; ///< none where nothing has a gradient
};

/// At most some 800 places of one level, spread over the polygon and a narrow band around it: in
/// each cell of a grid the pixel with the steepest gradient.
[[nodiscard]] Layer takeLayer(const Pyramid& picture, const Polygon& polygon, const Frame& frame,
                              int level);

/// Whether the levels behind `level` show all that the polygon holds: then it adds noise alone.
[[nodiscard]] bool isSoft(const Pyramid& picture, const Polygon& polygon, int level);

/// What a picture shows at the samples of a layer.
struct Seen {
    std::vector<const Sample*> samples; ///< those inside the picture and not left out
    std::vector<float> values;

    Seen(const Pyramid& picture, const Layer& layer, const Warp& warp, const Blocks& leftOut);
    /// The median of picture minus appearance. Needs a sample.
    [[nodiscard]] double offset(double gain) const;
    [[nodiscard]] double difference(std::size_t i, double gain, double offset) const {
        return static_cast<double>(values[i]) - gain * static_cast<double>(samples[i]->value) -
               offset;
    }
    /// An estimate of the standard deviation that outliers do not disturb.
    [[nodiscard]] double noise(double gain, double offset) const;
};

} // namespace track
