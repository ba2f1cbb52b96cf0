// The commands of the confirmation dialog.
#pragma once

#include <string_view>

#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kYes = "yes";
inline constexpr std::string_view kNo = "no";
} // namespace command

inline constexpr Command kConfirmationCommands[] = {
    {command::kYes, {}, u"Yes", u"ButtonYes", u"Go ahead"},
    {command::kNo, {}, u"No", u"ButtonNo", u"Leave everything as it is (Esc)", {kEsc}},
};

} // namespace ui
