// The commands of the confirmation dialog.
#pragma once

#include <string_view>

#include "core/Texts.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kYes = "yes";
inline constexpr std::string_view kNo = "no";
} // namespace command

inline constexpr Command kConfirmationCommands[] = {
    {command::kYes, {}, "Yes"_tr, u"ButtonYes", "Go ahead"_tr},
    {command::kNo, {}, "No"_tr, u"ButtonNo", "Leave everything as it is (Esc)"_tr, {kEsc}},
};

} // namespace ui
