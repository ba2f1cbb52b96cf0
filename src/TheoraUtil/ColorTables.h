// The five tables that define the colours of modes 1 to 10: ITU-R BT.601 in video range, scaled by
// 8192. All faster conversions must agree bit for bit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace theora {

struct ColorTables {
    std::array<std::int32_t, 256> y{};
    std::array<std::int32_t, 256> rv{};
    std::array<std::int32_t, 256> gu{};
    std::array<std::int32_t, 256> gv{};
    std::array<std::int32_t, 256> bu{};
};

// 1.164, 1.596, 0.391, 0.813 and 2.018 times 8192, each plus 0.5.
inline constexpr double kYFactor = 9535.988;
inline constexpr double kRvFactor = 13074.932;
inline constexpr double kGuFactor = 3203.572;
inline constexpr double kGvFactor = 6660.596;
inline constexpr double kBuFactor = 16531.956;
inline constexpr int kColorShift = 13;
inline constexpr int kLumaZero = 16;
inline constexpr int kChromaZero = 128;

constexpr ColorTables makeColorTables() {
    ColorTables tables;
    for (int i = 0; i < 256; ++i) {
        const auto at = static_cast<std::size_t>(i);
        tables.y[at] = static_cast<std::int32_t>((i - kLumaZero) * kYFactor);
        tables.rv[at] = static_cast<std::int32_t>((i - kChromaZero) * kRvFactor);
        tables.gu[at] = static_cast<std::int32_t>((i - kChromaZero) * kGuFactor);
        tables.gv[at] = static_cast<std::int32_t>((i - kChromaZero) * kGvFactor);
        tables.bu[at] = static_cast<std::int32_t>((i - kChromaZero) * kBuFactor);
    }
    return tables;
}

inline constexpr ColorTables kColorTables = makeColorTables();

/// Sum of a luma and a chroma entry to a colour byte.
constexpr std::uint8_t colorByte(std::int32_t sum) {
    const std::int32_t value = sum >> kColorShift;
    return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

/// Alpha from luma: nearly black is transparent, nearly white opaque.
constexpr std::uint8_t alphaByte(std::uint8_t luma) {
    constexpr std::uint8_t kTransparentBelow = 32;
    constexpr std::uint8_t kOpaqueFrom = 225;
    return luma < kTransparentBelow ? 0 : luma >= kOpaqueFrom ? 255 : luma;
}

} // namespace theora
