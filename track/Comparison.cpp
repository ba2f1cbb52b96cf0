#include "track/Comparison.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace track {
namespace {

constexpr double kAgrees = 3;    ///< times the noise
constexpr float kLeeway = 0.5F;  ///< of a sample's slack
constexpr double kGone = 0.35;   ///< agreement of a part below which it is not there
constexpr double kTelling = 0.5; ///< samples' worth below which a part says nothing

/// Shares of a layer's values that lie near a value.
class Chance {
public:
    explicit Chance(const Layer& layer) {
        for (const Sample& sample : layer.samples) {
            m_values.push_back(sample.value);
        }
        std::ranges::sort(m_values);
    }
    [[nodiscard]] double of(float value, float reach) const {
        const auto from = std::ranges::lower_bound(m_values, value - reach);
        const auto to = std::ranges::upper_bound(m_values, value + reach);
        return static_cast<double>(to - from) / static_cast<double>(m_values.size());
    }

private:
    std::vector<float> m_values;
};

} // namespace

Match compareParts(const Layer& layer, const Seen& seen, double gain, double offset, double noise) {
    const Chance chance(layer);
    Match match;
    for (std::size_t i = 0; i < seen.values.size(); ++i) {
        const Sample& sample = *seen.samples[i];
        const double leeway = static_cast<double>(kLeeway * sample.slack);
        const double reach = kAgrees * noise / gain + leeway; // before the gain
        const double byChance = chance.of(sample.value, static_cast<float>(reach));
        const bool agrees = std::abs(seen.difference(i, gain, offset)) < gain * reach;
        match.agreed[sample.block] += (agrees ? 1 : 0) - byChance;
        match.possible[sample.block] += 1 - byChance;
    }
    double all = 0;
    for (std::size_t i = 0; i < kBlocks; ++i) {
        const double possible = match.possible[i];
        match.agreed[i] = std::max(0.0, match.agreed[i]);
        all += possible;
        match.likeness += match.agreed[i];
        if (possible >= kTelling && match.agreed[i] < kGone * possible) {
            match.covered.set(i);
        } else {
            match.seen += possible;
        }
    }
    match.told = all / static_cast<double>(layer.samples.size());
    match.likeness /= std::max(all, 1e-9);
    match.seen /= std::max(all, 1e-9);
    return match;
}

} // namespace track
