// How the action list maps an action's values to what a row shows and back, without any window.
// Used by the branch editor.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "scene/Action.h"

namespace ui {

/// Translation keys of the conditions; the index is the action's type number.
inline constexpr std::array<const char*, 4> kConditionKeys{"Default", "Keypress", "Zone", "Random"};

inline constexpr int kConditionDefault = scene::Action::kDefaultAction;
inline constexpr int kConditionKeypress = scene::Action::kKeypressAction;
inline constexpr int kConditionZone = scene::Action::kZoneAction;
inline constexpr int kConditionRandom = scene::Action::kRandomAction;

/// What a row's parameter list does for a condition.
enum class ParameterKind {
    none,    ///< disabled and empty; a random action carries no parameter either
    letters, ///< the keys "A" to "Z"
    zones,   ///< the zones of the video on show
    unknown, ///< empty, enabled or not as it was before
};
[[nodiscard]] ParameterKind parameterKind(int condition);

/// "A" to "Z".
[[nodiscard]] const std::vector<std::string>& keyLetters();

/// The action number that a row keeps as its user data; -1 for an empty text.
[[nodiscard]] int actionNumber(const std::u16string& userData);

/// The first of `items` that equals `text` byte for byte; -1 when none does.
[[nodiscard]] int indexOfText(const std::vector<std::string>& items, std::string_view text);

/// The stored form of the item that a list shows at `index` with the text `shown`. Stored names
/// that are no valid UTF-8 are shown with replacement characters; this gives the bytes themselves.
/// An index outside `items`, or an item that looks different, gives `shown` converted.
[[nodiscard]] std::string storedChoice(const std::vector<std::string>& items, int index,
                                       const std::u16string& shown);

} // namespace ui
