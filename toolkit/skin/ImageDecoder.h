// PNG, JPEG, BMP and the first frame of GIF to bitmaps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/Bitmap.h"

namespace toolkit {

/// Sides and area beyond these are refused before anything is decoded.
inline constexpr int kMaxImageSide = 8192;
inline constexpr std::size_t kMaxImagePixels = std::size_t{1} << 24U;

/// Empty when `bytes` is no such image, is damaged or too large. Any thread.
[[nodiscard]] std::optional<platform::Bitmap> decodeImage(std::span<const std::uint8_t> bytes);

} // namespace toolkit
