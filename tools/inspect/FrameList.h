// The frames that a command line requests, never expanded: a range may not fit into memory.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace inspect {

/// Both included.
struct FrameRange {
    int first = 0;
    int last = 0;
    bool endsWithClip = false; ///< `last` is only an upper bound
};

/// `count` numbers below the clip's frame count, the same ones for the same seed on every system.
struct RandomFrames {
    std::uint32_t seed = 0;
    int count = 0;
};

using FrameItem = std::variant<FrameRange, RandomFrames>;

/// Reads N, A-B (A <= B) or random:SEED:COUNT. Empty for any other text.
[[nodiscard]] std::optional<FrameItem> readFrameItem(const std::string& text);

} // namespace inspect
