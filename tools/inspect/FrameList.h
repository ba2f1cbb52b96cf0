// The frames that a command line asks for.
#pragma once

#include <string>
#include <vector>

namespace inspect {

/// Adds the frames of one item: N, A-B (both included, A <= B) or random:SEED:COUNT (numbers below
/// frameCount, the same ones for the same seed on every system). False when it is none of these.
[[nodiscard]] bool addFrames(const std::string& item, int frameCount, std::vector<int>& frames);

} // namespace inspect
