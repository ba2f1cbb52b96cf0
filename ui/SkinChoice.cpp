#include "ui/SkinChoice.h"

#include <algorithm>
#include <string>

#include "core/EditorSettings.h"
#include "core/Text.h"

namespace ui {
namespace {

constexpr std::string_view kKey = "skin";

} // namespace

const SkinChoice& chosenSkin(const core::EditorSettings& settings) {
    const std::string value = core::lowerCase(settings.getString(kKey, kSkinChoices[0].value));
    const auto* const found =
        std::find_if(kSkinChoices.begin(), kSkinChoices.end(),
                     [&](const SkinChoice& choice) { return choice.value == value; });
    return found != kSkinChoices.end() ? *found : kSkinChoices[0];
}

bool keepSkin(core::EditorSettings& settings, const SkinChoice& choice) {
    return settings.set(kKey, choice.value);
}

} // namespace ui
