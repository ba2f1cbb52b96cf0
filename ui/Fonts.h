// The fonts of the windows by their numbers: every layout lists them in this order.
#pragma once

namespace ui::font {

inline constexpr int kBody = 0;
inline constexpr int kHeading = 1;
inline constexpr int kList = 2;
inline constexpr int kSmallest = 3; ///< for numbers beside points and frames
inline constexpr int kSmall = 4;
inline constexpr int kBold = 5;

} // namespace ui::font
