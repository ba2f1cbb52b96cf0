// The values of layout attributes: numbers, flags, colours, sizes and rectangles from text. Blanks
// around numbers are ignored. Anything else is not a value; the attribute stays as it was.
#pragma once

#include <optional>
#include <string_view>

#include "platform/Color.h"
#include "platform/Geometry.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

/// Largest magnitude of a number in a layout, so that sums of a few never overflow.
inline constexpr int kMaxLayoutNumber = 32767;

[[nodiscard]] std::u16string_view trimmed(std::u16string_view text);
/// Decimal with an optional sign, limited to +-kMaxLayoutNumber.
[[nodiscard]] std::optional<int> parseInt(std::u16string_view text);
/// "true" or "false".
[[nodiscard]] std::optional<bool> parseBool(std::u16string_view text);
/// "#AARRGGBB", "0xAARRGGBB", or six digits for an opaque colour.
[[nodiscard]] std::optional<platform::Color> parseColor(std::u16string_view text);
/// As these, or the name of a tone.
[[nodiscard]] std::optional<SkinColor> parseSkinColor(std::u16string_view text);
/// "width,height".
[[nodiscard]] std::optional<platform::Size> parseSize(std::u16string_view text);
/// "left,top,right,bottom" as they stand: edges, paddings or corners.
[[nodiscard]] std::optional<platform::Rect> parseRect(std::u16string_view text);
/// "x,y,width,height".
[[nodiscard]] std::optional<platform::Rect> parsePlace(std::u16string_view text);

} // namespace toolkit
