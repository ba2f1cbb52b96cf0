// The colours of the kinds of actions on the map. Used by the map's drawing only.
#pragma once

#include <array>
#include <cstddef>

#include "map/MapScene.h"
#include "platform/Color.h"

namespace ui {

inline constexpr std::array<platform::Color, 4> kKindColors{0xFF465362, 0xFF1D63AD, 0xFF0B6B60,
                                                            0xFF6A3D9E};

/// An index of the above; unknown types count as Default.
[[nodiscard]] inline std::size_t kindOf(const map::MapAction& action) {
    const auto type = static_cast<std::size_t>(action.type);
    return action.type > 0 && type < kKindColors.size() ? type : 0;
}

} // namespace ui
