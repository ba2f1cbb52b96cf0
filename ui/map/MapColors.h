// The colours of the kinds of actions. Used by what draws the map and the preview.
#pragma once

#include <array>
#include <cstddef>

#include "toolkit/skin/Palette.h"

namespace ui {

/// By the type of an action; unknown types count as Default.
[[nodiscard]] inline toolkit::Tone toneOfKind(int type) {
    using toolkit::Tone;
    constexpr std::array kTones{Tone::defaultKind, Tone::keyKind, Tone::zoneKind, Tone::randomKind};
    const auto index = static_cast<std::size_t>(type);
    return type > 0 && index < kTones.size() ? kTones[index] : Tone::defaultKind;
}

} // namespace ui
