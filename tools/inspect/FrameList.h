// The frames that a command line asks for. They are never listed one by one: a range may be larger
// than memory.
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
    bool endsWithClip = false; ///< `last` is only a bound
};

/// `count` numbers below the clip's frame count, the same ones for the same seed on every system.
struct RandomFrames {
    std::uint32_t seed = 0;
    int count = 0;
};

using FrameItem = std::variant<FrameRange, RandomFrames>;

/// Reads N, A-B (A <= B) or random:SEED:COUNT. Empty when the text is none of these.
[[nodiscard]] std::optional<FrameItem> readFrameItem(const std::string& text);

} // namespace inspect
