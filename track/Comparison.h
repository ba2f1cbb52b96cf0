// How much of an appearance a picture shows. The tracker's own sources only.
#pragma once

#include "track/Appearance.h"
#include "track/Samples.h"

namespace track {

/// For each part of the thing: the share of places whose grey values agree within three times the
/// noise, and more where they are steep, less the share that would agree by chance (Cohen, "A
/// Coefficient of Agreement for Nominal Scales", Educational and Psychological Measurement 20,
/// 1960). So plain areas, which agree with much, count little. `inside` is not set.
[[nodiscard]] Match compareParts(const Layer& layer, const Seen& seen, double gain, double offset,
                                 double noise);

} // namespace track
