// What the preview says about the way taken and the choices there are.
#pragma once

#include <string>

#include "player/Player.h"

namespace ui {

/// 'Zone "Fire" clicked, immediate'.
[[nodiscard]] std::u16string reasonText(const player::Reason& reason);
/// 'Ended: "Exit" has no action that applies.'; empty while it plays.
[[nodiscard]] std::u16string endText(const player::Player& player);
/// "At the end, in 0:01.80". `secondsLeft`: of the clip; below 0 if unknown.
[[nodiscard]] std::u16string choiceText(const player::Player& player, const player::Choice& choice,
                                        double secondsLeft);
/// The way taken, a line for each branch, for the clipboard.
[[nodiscard]] std::u16string pathText(const player::Player& player);

} // namespace ui
