#include "track/Samples.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace track {
namespace {

constexpr double kSamples = 800;
constexpr float kLeastGradient = 0.4F; ///< of the steepest places, in grey values a pixel
constexpr double kLeastNoise = 1.5;    ///< grey values
constexpr double kRim = 0.1;           ///< of the smaller side: what is near the outline
constexpr double kSoft = 0.75;         ///< of the steepness kept on a level of half the size
constexpr double kMostLooked = 1500;   ///< pixels
constexpr float kSlack = 0.5F;         ///< pixels of a layer

struct Gradient {
    float x = 0;
    float y = 0;

    [[nodiscard]] float squared() const { return x * x + y * y; }
};

/// Sobel's weights, in grey values a pixel.
Gradient gradientAt(const Plane& plane, int x, int y) {
    const float* a = plane.row(y - 1) + x;
    const float* b = plane.row(y) + x;
    const float* c = plane.row(y + 1) + x;
    return {(a[1] - a[-1] + 2 * (b[1] - b[-1]) + c[1] - c[-1]) / 8,
            (c[-1] + 2 * c[0] + c[1] - a[-1] - 2 * a[0] - a[1]) / 8};
}

/// Pixels, right and bottom excluded.
struct Area {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// Those within `band` of the polygon's bounds that have neighbours on all sides.
Area areaOf(const Plane& plane, const Box& box, double band, int level) {
    const Point from = Pyramid::toLevel({box.left - band, box.top - band}, level);
    const Point to = Pyramid::toLevel({box.right + band, box.bottom + band}, level);
    const auto inside = [](double value, int size) {
        return static_cast<int>(std::clamp<double>(std::floor(value), 1, std::max(1, size - 1)));
    };
    return {inside(from.x, plane.width()), inside(from.y, plane.height()),
            inside(to.x + 2, plane.width()), inside(to.y + 2, plane.height())};
}

struct Pixel {
    int x = 0;
    int y = 0;
    Gradient gradient;
};

Point placeOf(int x, int y, int level) {
    return Pyramid::fromLevel({static_cast<double>(x), static_cast<double>(y)}, level);
}

/// The pixel of a cell whose gradient is the largest; none where the cell is outside of the band.
std::optional<Pixel> steepest(const Plane& plane, int level, const Polygon& polygon, double band,
                              const Area& cell) {
    std::optional<Pixel> best;
    for (int y = cell.top; y < cell.bottom; ++y) {
        for (int x = cell.left; x < cell.right; ++x) {
            const Gradient gradient = gradientAt(plane, x, y);
            const bool isSteeper = !best || gradient.squared() > best->gradient.squared();
            if (isSteeper && distanceTo(polygon, placeOf(x, y, level)) <= band) {
                best = {x, y, gradient};
            }
        }
    }
    return best;
}

/// The mean of the squared gradients of what the polygon holds, for pixels of level 0.
double steepnessOf(const Pyramid& picture, const Polygon& polygon, int level) {
    const Plane& plane = picture.level(level);
    const Area area = areaOf(plane, boundsOf(polygon), 0, level);
    const double pixels = static_cast<double>(area.right - area.left) * (area.bottom - area.top);
    const int stride = std::max(1, static_cast<int>(std::lround(std::sqrt(pixels / kMostLooked))));
    double sum = 0;
    int count = 0;
    for (int y = area.top; y < area.bottom; y += stride) {
        for (int x = area.left; x < area.right; x += stride) {
            if (contains(polygon, placeOf(x, y, level))) {
                sum += static_cast<double>(gradientAt(plane, x, y).squared());
                ++count;
            }
        }
    }
    return count > 0 ? sum / count / Pyramid::step(2 * level) : 0;
}

Sample sampleAt(const Plane& plane, int level, const Pixel& pixel, const Frame& frame) {
    Sample sample;
    sample.at = placeOf(pixel.x, pixel.y, level);
    sample.value = plane.row(pixel.y)[pixel.x];
    sample.block = frame.blockAt(sample.at);
    sample.slack = kSlack * std::sqrt(pixel.gradient.squared());
    const auto u = static_cast<float>((sample.at.x - frame.centre.x) / frame.radius);
    const auto v = static_cast<float>((sample.at.y - frame.centre.y) / frame.radius);
    const float gx = pixel.gradient.x / static_cast<float>(Pyramid::step(level));
    const float gy = pixel.gradient.y / static_cast<float>(Pyramid::step(level));
    const float outwards = gx * u + gy * v;
    sample.change = {
        gx,           gy,          outwards, gy * u - gx * v, gx * u - gy * v, gx * v + gy * u,
        u * outwards, v * outwards};
    return sample;
}

double median(std::vector<float>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return static_cast<double>(*middle);
}

} // namespace

Frame::Frame(const Polygon& polygon)
    : box(boundsOf(polygon)), centre{(box.left + box.right) / 2, (box.top + box.bottom) / 2},
      radius(std::max(1.0, std::hypot(box.width(), box.height()) / 2)) {}

std::size_t Frame::blockAt(Point at) const {
    const auto index = [](double along, double size) {
        const double place = size > 0 ? along / size * kBlocksAcross : 0;
        return static_cast<std::size_t>(std::clamp<double>(place, 0, kBlocksAcross - 1));
    };
    return index(at.y - box.top, box.height()) * kBlocksAcross +
           index(at.x - box.left, box.width());
}

Warp Frame::warpOf(const Motions& pixels) const {
    Motions p{};
    std::ranges::transform(pixels, p.begin(), [this](double value) { return value / radius; });
    const Warp around{
        {1 + p[2] + p[4], p[5] - p[3], p[0], p[3] + p[5], 1 + p[2] - p[4], p[1], -p[6], -p[7], 1}};
    const Warp out{{radius, 0, centre.x, 0, radius, centre.y, 0, 0, 1}};
    return out * around * out.inverse();
}

bool isSoft(const Pyramid& picture, const Polygon& polygon, int level) {
    return level + 2 < picture.levels() && steepnessOf(picture, polygon, level + 2) >
                                               kSoft * steepnessOf(picture, polygon, level + 1);
}

Layer takeLayer(const Pyramid& picture, const Polygon& polygon, const Frame& frame, int level) {
    const Plane& plane = picture.level(level);
    const double band =
        std::max(1.25 * Pyramid::step(level), std::clamp(0.06 * frame.radius, 1.5, 5.0));
    const Area area = areaOf(plane, frame.box, band, level);
    const double pixels = static_cast<double>(area.right - area.left) * (area.bottom - area.top);
    const int side = std::max(1, static_cast<int>(std::lround(std::sqrt(pixels / kSamples))));
    Layer layer{level, {}};
    float most = 0;
    double sum = 0;
    for (int y = area.top; y < area.bottom; y += side) {
        for (int x = area.left; x < area.right; x += side) {
            const Area cell{x, y, std::min(area.right, x + side), std::min(area.bottom, y + side)};
            if (const auto found = steepest(plane, level, polygon, band, cell)) {
                most = std::max(most, found->gradient.squared());
                layer.samples.push_back(sampleAt(plane, level, *found, frame));
                Sample& sample = layer.samples.back();
                sample.isInner = contains(polygon, sample.at) &&
                                 distanceToOutline(polygon, sample.at) >
                                     kRim * std::min(frame.box.width(), frame.box.height());
                sum += static_cast<double>(layer.samples.back().value);
            }
        }
    }
    if (most < kLeastGradient * kLeastGradient) {
        layer.samples.clear();
        return layer;
    }
    const auto mean = static_cast<float>(sum / static_cast<double>(layer.samples.size()));
    for (Sample& sample : layer.samples) {
        sample.value -= mean;
    }
    return layer;
}

Seen::Seen(const Pyramid& picture, const Layer& layer, const Warp& warp, const Blocks& leftOut) {
    const Plane& plane = picture.level(layer.level);
    samples.reserve(layer.samples.size());
    values.reserve(layer.samples.size());
    for (const Sample& sample : layer.samples) {
        const Point at = Pyramid::toLevel(warp(sample.at), layer.level);
        const auto x = static_cast<float>(at.x);
        const auto y = static_cast<float>(at.y);
        if (!leftOut.test(sample.block) && plane.covers(x, y)) {
            samples.push_back(&sample);
            values.push_back(plane.at(x, y));
        }
    }
}

double Seen::offset(double gain) const {
    std::vector<float> differences(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        differences[i] = values[i] - static_cast<float>(gain) * samples[i]->value;
    }
    return median(differences);
}

double Seen::noise(double gain, double offset) const {
    std::vector<float> sizes(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        sizes[i] = static_cast<float>(std::abs(difference(i, gain, offset)));
    }
    return std::max(kLeastNoise, 1.4826 * median(sizes));
}

} // namespace track
