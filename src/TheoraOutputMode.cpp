#include "src/TheoraOutputMode.h"

#include <array>
#include <cstddef>

namespace theora {
namespace {

constexpr std::array<int, kOutputModeCount> kBytesPerPixel = {0, 3, 4, 4, 4, 4, 3, 4, 4, 4, 4,
                                                              1, 3, 4, 4, 4, 4, 3, 4, 4, 4, 4};
constexpr std::array<bool, kOutputModeCount> kAlpha = {
    false, false, true, false, true, false, false, true, false, true, false,
    false, false, true, false, true, false, false, true, false, true, false};

bool isKnown(TheoraOutputMode mode) {
    return static_cast<int>(mode) >= 0 && static_cast<int>(mode) < kOutputModeCount;
}

} // namespace

int bytesPerPixel(TheoraOutputMode mode) {
    return isKnown(mode) ? kBytesPerPixel[static_cast<std::size_t>(mode)] : 0;
}

bool hasAlpha(TheoraOutputMode mode) {
    return isKnown(mode) && kAlpha[static_cast<std::size_t>(mode)];
}

} // namespace theora
