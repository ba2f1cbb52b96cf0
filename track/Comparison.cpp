#include "track/Comparison.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace track {
namespace {

constexpr double kAgrees = 3;    ///< times the noise
constexpr double kGone = 0.35;   ///< agreement of a part below which it is not there
constexpr double kTelling = 0.5; ///< samples' worth below which a part says nothing

/// Shares of a layer's values that lie near a value.
class Chance {
public:
    Chance(const Layer& layer, double reach) : m_reach(static_cast<float>(reach)) {
        for (const Sample& sample : layer.samples) {
            m_values.push_back(sample.value);
        }
        std::ranges::sort(m_values);
    }
    [[nodiscard]] double of(float value) const {
        const auto from = std::ranges::lower_bound(m_values, value - m_reach);
        const auto to = std::ranges::upper_bound(m_values, value + m_reach);
        return static_cast<double>(to - from) / static_cast<double>(m_values.size());
    }

private:
    float m_reach;
    std::vector<float> m_values;
};

} // namespace

Match compareParts(const Layer& layer, const Seen& seen, double gain, double offset, double noise) {
    const double reach = kAgrees * noise;
    const Chance chance(layer, reach / gain);
    std::array<double, kBlocks> agreed{};
    std::array<double, kBlocks> possible{};
    for (std::size_t i = 0; i < seen.values.size(); ++i) {
        const Sample& sample = *seen.samples[i];
        const double byChance = chance.of(sample.value);
        const bool agrees = std::abs(seen.difference(i, gain, offset)) < reach;
        agreed[sample.block] += (agrees ? 1 : 0) - byChance;
        possible[sample.block] += 1 - byChance;
    }
    Match match;
    double all = 0;
    for (std::size_t i = 0; i < kBlocks; ++i) {
        all += possible[i];
        match.likeness += std::max(0.0, agreed[i]);
        if (possible[i] >= kTelling && agreed[i] < kGone * possible[i]) {
            match.covered.set(i);
        } else {
            match.seen += possible[i];
        }
    }
    match.likeness /= std::max(all, 1e-9);
    match.seen /= std::max(all, 1e-9);
    return match;
}

} // namespace track
