#include "track/Appearance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "track/Comparison.h"
#include "track/Equations.h"

namespace track {
namespace {

constexpr double kMostPixels = 20000; ///< of the finest layer
constexpr double kLeastSide = 10;     ///< of the coarsest layer
constexpr double kComparedSide = 20;  ///< of the layer that is compared, if there is one
constexpr int kMostLayers = 3;
constexpr std::size_t kLeastSamples = 12;
constexpr int kMostSteps = 10;
constexpr double kStill = 0.02;      ///< pixels; steps below end the search
constexpr double kCoarseNoise = 4;   ///< times the usual noise, before the place is exact
constexpr double kFineNoise = 2;     ///< the same on the finest layer
constexpr double kOutlying = 2.5;    ///< times the noise: half the pull
constexpr double kInexact = 0.3;     ///< share of a sample's slack that is noise of its own
constexpr double kIndependent = 0.1; ///< share of samples that count: neighbours tell the same
/// How far the motions may lie from the guess, as shares of the radius; and pixels for shifts.
constexpr Motions kFreedom{0.1, 0.1, 0.06, 0.06, 0.01, 0.01, 0.005, 0.005};
constexpr double kShiftFreedom = 6;
constexpr std::size_t kShifts = 2; ///< the first motions
constexpr std::size_t kPlain = 6;  ///< those in front of the perspectives
/// Things smaller than this have too few places to tell turns and stretches from noise: they lose
/// that freedom by this power of their area.
constexpr double kHeldArea = 1024;
constexpr double kHolding = 1.5;
constexpr double kMostHeld = 0.01;
/// On layers finer than the compared one, where noise in the appearance itself makes every fitted
/// gain too small: it stays as it is.
constexpr double kHeldGainFreedom = 0.01;
constexpr double kLeastGain = 0.1;
constexpr double kMostGain = 4;
constexpr double kGainChange = 1.3; ///< from picture to picture, at most

/// 1 for no difference, half at an outlying one.
float pullOf(double difference, double variance) {
    const double bound = kOutlying * kOutlying * variance;
    return static_cast<float>(bound / (bound + difference * difference));
}

} // namespace

Appearance::Appearance(const Pyramid& picture, const Polygon& polygon) : m_frame(polygon) {
    const Box& box = m_frame.box;
    const double side = std::min(box.width(), box.height());
    int finest = 0;
    while (finest + 1 < picture.levels() &&
           box.width() * box.height() > kMostPixels * Pyramid::step(2 * finest)) {
        ++finest;
    }
    while (side >= 2 * kLeastSide * Pyramid::step(finest + 1) && isSoft(picture, polygon, finest)) {
        ++finest;
    }
    int coarsest = finest;
    while (coarsest + 1 < std::min(picture.levels(), finest + kMostLayers) &&
           side >= kLeastSide * Pyramid::step(coarsest + 1)) {
        ++coarsest;
    }
    for (int level = coarsest; level >= finest; --level) {
        Layer layer = takeLayer(picture, polygon, m_frame, level);
        if (layer.samples.size() < kLeastSamples) {
            continue;
        }
        m_layers.push_back(std::move(layer));
        if (side < kComparedSide * Pyramid::step(level)) {
            m_compared = m_layers.size();
        }
    }
    m_compared = m_layers.empty() ? 0 : std::min(m_compared, m_layers.size() - 1);
}

double Appearance::freedomOf(std::size_t motion) const {
    return kFreedom[motion] * m_frame.radius + (motion < kShifts ? kShiftFreedom : 0);
}

bool Appearance::step(const Seen& seen, const std::vector<float>& weights, double stillness,
                      Fit& fit) const {
    Equations<kMotions + 2> equations; // the last two: gain and offset
    for (std::size_t i = 0; i < seen.values.size(); ++i) {
        std::array<double, kMotions + 2> row{};
        std::ranges::transform(seen.samples[i]->change, row.begin(), [&](float change) {
            return fit.gain * static_cast<double>(change);
        });
        row[kMotions] = -static_cast<double>(seen.samples[i]->value);
        row[kMotions + 1] = -1;
        equations.add(row, -seen.difference(i, fit.gain, fit.offset),
                      kIndependent * static_cast<double>(weights[i]));
    }
    Equations<kMotions + 2> open = equations;
    const double area = m_frame.box.width() * m_frame.box.height();
    const double held = std::clamp(std::pow(area / kHeldArea, kHolding), kMostHeld, 1.0);
    for (std::size_t i = 0; i < kMotions; ++i) {
        equations.addPrior(i, -fit.moved[i], freedomOf(i) * (i < kShifts ? 1 : held));
        open.addPrior(i, 0, freedomOf(i));
    }
    equations.addPrior(kMotions, fit.expectedGain - fit.gain, fit.gainFreedom);
    open.addPrior(kMotions, 0, fit.gainFreedom);
    if (!equations.solve() || !open.solve()) {
        return false;
    }
    double variance = 0;
    for (std::size_t i = 0; i < kPlain; ++i) {
        variance += open.variance(i);
    }
    fit.spread = std::sqrt(variance);
    Motions pixels{};
    std::copy_n(equations.right.begin(), kMotions, pixels.begin());
    fit.warp = fit.warp * m_frame.warpOf(pixels);
    fit.gain = std::clamp(fit.gain + equations.right[kMotions], fit.leastGain, fit.mostGain);
    fit.offset += equations.right[kMotions + 1];
    double largest = 0;
    for (std::size_t i = 0; i < kMotions; ++i) {
        fit.moved[i] += pixels[i];
        largest = std::max(largest, std::abs(pixels[i]));
    }
    return largest >= stillness;
}

bool Appearance::refine(const Pyramid& picture, std::size_t index, const Experience& experience,
                        Fit& fit) const {
    const Layer& layer = m_layers[index];
    const bool isFinest = index + 1 == m_layers.size();
    const double mostNoise = experience.noise * (isFinest ? kFineNoise : kCoarseNoise);
    const double stillness = kStill * Pyramid::step(layer.level);
    if (index > m_compared) {
        fit.expectedGain = fit.gain;
        fit.gainFreedom = kHeldGainFreedom;
    }
    std::vector<float> weights;
    for (int i = 0; i < kMostSteps; ++i) {
        const Seen seen(picture, layer, fit.warp, experience.covered);
        if (seen.samples.size() < kLeastSamples) {
            return false;
        }
        if (i == 0) {
            fit.offset = seen.offset(fit.gain);
        }
        fit.noise = seen.noise(fit.gain, fit.offset);
        const double noise = std::min(fit.noise, mostNoise);
        weights.resize(seen.values.size());
        for (std::size_t k = 0; k < weights.size(); ++k) {
            const double slack = fit.gain * static_cast<double>(seen.samples[k]->slack);
            const float pull =
                pullOf(seen.difference(k, fit.gain, fit.offset), noise * noise + slack * slack);
            const auto sample = static_cast<std::size_t>(seen.samples[k] - layer.samples.data());
            const float trust = experience.trust.empty() ? 1 : experience.trust[index][sample];
            const bool counts = !experience.isInnerOnly || seen.samples[k]->isInner;
            const double inexact = kInexact * slack;
            weights[k] =
                counts ? trust * pull * pull / static_cast<float>(noise * noise + inexact * inexact)
                       : 0;
        }
        if (!step(seen, weights, stillness, fit)) {
            break;
        }
    }
    return true;
}

Trust Appearance::agreement(const Pyramid& picture, const Fit& fit) const {
    Trust agreed;
    for (const Layer& layer : m_layers) {
        const Seen seen(picture, layer, fit.warp, {});
        agreed.emplace_back(layer.samples.size(), 0.0F);
        if (seen.values.empty()) {
            continue;
        }
        const double offset = seen.offset(fit.gain);
        const double noise = seen.noise(fit.gain, offset);
        for (std::size_t i = 0; i < seen.values.size(); ++i) {
            const auto sample = static_cast<std::size_t>(seen.samples[i] - layer.samples.data());
            agreed.back()[sample] = pullOf(seen.difference(i, fit.gain, offset), noise * noise);
        }
    }
    return agreed;
}

void Appearance::compare(const Pyramid& picture, const Fit& fit, const Experience& experience,
                         Found& found) const {
    const Layer& layer = m_layers[m_compared];
    const Seen open(picture, layer, fit.warp, experience.covered);
    const Seen all(picture, layer, fit.warp, {});
    found.match.inside =
        static_cast<double>(all.values.size()) / static_cast<double>(layer.samples.size());
    if (open.values.size() < kLeastSamples) {
        return;
    }
    const double offset = open.offset(fit.gain);
    found.comparedNoise = open.noise(fit.gain, offset);
    const double inside = found.match.inside;
    found.match = compareParts(layer, all, fit.gain, offset,
                               std::min(found.comparedNoise, experience.comparedNoise));
    found.match.inside = inside;
}

Appearance::Found Appearance::find(const Pyramid& picture, const Warp& guess,
                                   const Experience& experience) const {
    Fit fit;
    fit.warp = guess;
    fit.gain = fit.expectedGain = experience.gain;
    fit.leastGain = std::max(kLeastGain, experience.gain / kGainChange);
    fit.mostGain = std::min(kMostGain, experience.gain * kGainChange);
    for (std::size_t i = 0; i < m_layers.size(); ++i) {
        if (!refine(picture, i, experience, fit)) {
            return {.warp = guess};
        }
    }
    Found found{.warp = fit.warp,
                .noise = fit.noise,
                .gain = fit.gain,
                .agreed = agreement(picture, fit),
                .spread = fit.spread / m_frame.radius};
    compare(picture, fit, experience, found);
    return found;
}

void Appearance::average(const Pyramid& picture, const Found& found, int count) {
    for (Layer& layer : m_layers) {
        const Seen seen(picture, layer, found.warp, found.match.covered);
        if (seen.values.size() < kLeastSamples) {
            continue;
        }
        const double offset = seen.offset(found.gain);
        const double most = kOutlying * seen.noise(found.gain, offset);
        for (std::size_t i = 0; i < seen.values.size(); ++i) {
            const double difference = seen.difference(i, found.gain, offset);
            if (std::abs(difference) < most) {
                Sample& sample =
                    layer.samples[static_cast<std::size_t>(seen.samples[i] - layer.samples.data())];
                sample.value += static_cast<float>(difference / (found.gain * (count + 1)));
            }
        }
    }
}

} // namespace track
