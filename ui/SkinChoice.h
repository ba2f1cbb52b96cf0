// Which of its two looks the author wants the skin to have, as kept in "Editor.ini".
#pragma once

#include <array>
#include <string_view>

#include "core/Texts.h"
#include "platform/Window.h"

namespace core {
class EditorSettings;
}

namespace ui {

struct SkinChoice {
    platform::Appearance appearance;
    std::string_view value; ///< in the settings
    core::Text text;
};

inline constexpr std::array<SkinChoice, 3> kSkinChoices{
    {{platform::Appearance::light, "light", "Light"_tr},
     {platform::Appearance::dark, "dark", "Dark"_tr},
     {platform::Appearance::asSystem, "system", "As the system"_tr}}};

/// The first one when the settings say nothing that is known.
[[nodiscard]] const SkinChoice& chosenSkin(const core::EditorSettings& settings);
/// False, with a log line, when the choice cannot be kept.
bool keepSkin(core::EditorSettings& settings, const SkinChoice& choice);

} // namespace ui
