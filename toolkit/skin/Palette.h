// The colours of a skin's layouts and of what the program draws itself, by the names that the skin
// gives them.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/Color.h"

namespace toolkit {

enum class Tone {
    ink,
    value, ///< what the author has written
    muted,
    hint,
    window,
    band,
    surface,
    line,
    edge,
    frame, ///< round the window
    accent,
    primary, ///< the ground of the main button
    onPrimary,
    selected,
    onSelected,
    hot,
    off, ///< disabled texts
    danger,
    warn,
    warnFill,
    warnEdge,
    good,
    question, ///< behind the title of a question
    onQuestion,
    tip, ///< behind tool tips
    onTip,
    listEdge, ///< round lists
    divider,  ///< between groups of buttons and columns
    rowLine,  ///< between rows
    selectedLine,
    itemOff, ///< texts of disabled items
    canvas,  ///< behind the map
    stage,   ///< round a picture
    onStage, ///< hints there
    tag,     ///< behind a name on a picture
    onTag,   ///< that name
    halo,    ///< round lines on a picture
    rest,    ///< of a bar, where nothing has been done or is active
    run,     ///< where a zone is active
    playhead,
    tick,        ///< fine marks of a ruler
    defaultKind, ///< of actions: their lines and badges
    keyKind,
    zoneKind,
    randomKind,
    onKind ///< letters on badges
};

/// The tone that skins give this name.
[[nodiscard]] std::optional<Tone> toneNamed(std::u16string_view name);

class Palette {
public:
    /// That of the default skin, light.
    Palette();
    [[nodiscard]] platform::Color operator[](Tone tone) const {
        return m_colors[static_cast<std::size_t>(tone)];
    }
    void set(Tone tone, platform::Color color) { m_colors[static_cast<std::size_t>(tone)] = color; }

private:
    static constexpr std::size_t kCount = static_cast<std::size_t>(Tone::onKind) + 1;

    std::array<platform::Color, kCount> m_colors;
};

} // namespace toolkit
