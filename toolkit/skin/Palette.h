// The colours of what the program draws itself, by the names that a skin gives them.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "platform/Color.h"

namespace toolkit {

enum class Tone {
    ink,
    muted,
    hint,
    surface,
    band,
    line,
    edge,
    accent,
    selected,
    onSelected,
    danger,
    stage,       ///< round a picture
    onStage,     ///< hints there
    tag,         ///< behind a name on a picture
    onTag,       ///< that name
    halo,        ///< round lines on a picture
    rest,        ///< of a bar that has not been played yet
    defaultKind, ///< of actions: their lines and badges
    keyKind,
    zoneKind,
    randomKind,
    onKind ///< letters on badges
};

class Palette {
public:
    /// That of the default skin.
    Palette();
    [[nodiscard]] platform::Color operator[](Tone tone) const {
        return m_colors[static_cast<std::size_t>(tone)];
    }
    /// Replaces the colour of that name, if there is one.
    void set(std::u16string_view name, platform::Color color);

private:
    static constexpr std::size_t kCount = static_cast<std::size_t>(Tone::onKind) + 1;

    std::array<platform::Color, kCount> m_colors;
};

} // namespace toolkit
