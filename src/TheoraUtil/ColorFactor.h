// The factors of the colour tables as 16-bit numbers, for the fast loops.
//
// A table entry is trunc(d * k), d being the sample minus its zero. With K the next integer above k
// this equals d * K - c, where c = |d| * (K - k) rounded up, with the sign of d. The products'
// fractions are multiples of 1/250 and never 0 for any d that occurs, so rounding up is rounding
// down plus 1, and one multiplication by (K - k) * 65536 is exact enough.
#pragma once

#include <cstdint>

#include "src/TheoraUtil/ColorTables.h"

namespace theora {

struct ColorFactor {
    std::int16_t whole;    ///< K
    std::int16_t fraction; ///< (K - k) * 65536; every K - k is below one half
};

/// factor: k.
constexpr ColorFactor makeColorFactor(double factor) {
    const int whole = static_cast<int>(factor) + 1;
    const int fraction = (static_cast<int>((whole - factor) * 65536 * 2) + 1) / 2; // rounded
    return {static_cast<std::int16_t>(whole), static_cast<std::int16_t>(fraction)};
}

inline constexpr ColorFactor kLumaFactor = makeColorFactor(kYFactor);
inline constexpr ColorFactor kRedFactor = makeColorFactor(kRvFactor);
inline constexpr ColorFactor kGreenUFactor = makeColorFactor(kGuFactor);
inline constexpr ColorFactor kGreenVFactor = makeColorFactor(kGvFactor);
inline constexpr ColorFactor kBlueFactor = makeColorFactor(kBuFactor);

} // namespace theora
