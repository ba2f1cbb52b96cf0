// The dice of a player: the same seed gives the same throws in every player, whatever it is written
// in. Only sums, shifts and products of 32 bits.
#pragma once

#include <cstdint>

namespace player {

class Chance {
public:
    explicit Chance(std::uint32_t seed) : m_state(seed) {}
    /// One of 0 to count - 1; count: at least 1.
    [[nodiscard]] int pick(int count);

private:
    std::uint32_t m_state;
};

} // namespace player
