// Lengths, sizes and shares as the windows write them, in the chosen language. Any thread.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Geometry.h"

namespace ui {

/// "07", of a number from 0.
[[nodiscard]] std::string twoDigits(long long number);
/// "0:04.25" in every language; empty for a length that none can be.
[[nodiscard]] std::u16string lengthText(double seconds);
/// "0:38"; empty for what is unknown or takes too long to say.
[[nodiscard]] std::u16string minutesText(double seconds);
/// "1280 × 720".
[[nodiscard]] std::u16string sizeText(platform::Size size);
/// "842 KB", "8.2 MB".
[[nodiscard]] std::u16string bytesText(std::uint64_t bytes);
/// "46 %".
[[nodiscard]] std::u16string percentText(int percent);

} // namespace ui
