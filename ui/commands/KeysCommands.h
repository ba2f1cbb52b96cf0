// The commands of the list of keys.
#pragma once

#include <string_view>

#include "platform/Event.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kCopyKeys = "copyKeys";
inline constexpr std::string_view kCloseKeys = "closeKeys";
} // namespace command

inline constexpr Command kKeysCommands[] = {
    {.id = command::kKeys, .text = u"Keys", .keys = {{kF1}}},
    {command::kCopyKeys, {}, u"Copy List", u"ButtonKeysCopy", u"Copy these keys as text"},
    {command::kManual, {}, u"Manual", u"ButtonManual", u"Open the manual in the browser"},
    {command::kCloseKeys,
     {},
     u"Close",
     u"ButtonKeysClose",
     u"Close the list of keys (Esc)",
     {kEsc}},
};

} // namespace ui
