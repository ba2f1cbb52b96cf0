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
inline constexpr std::string_view kChangeKey = "changeKey";
inline constexpr std::string_view kRemoveKey = "removeKey";
inline constexpr std::string_view kResetKey = "resetKey";
inline constexpr std::string_view kResetKeys = "resetKeys";
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
    {.id = command::kFind, .text = u"Find", .keys = {{kCtrlF}}},
    {.id = command::kChangeKey, .text = u"Change…", .keys = {{kF2}}},
    {.id = command::kRemoveKey, .text = u"Remove", .keys = {{{platform::Key::del, {}}}}},
    {.id = command::kResetKey, .text = u"As at First"},
    {.id = command::kResetKeys, .text = u"All Keys as at First"},
};

inline constexpr std::string_view kKeyRows[] = {command::kChangeKey, command::kRemoveKey,
                                                command::kResetKey, command::kLine,
                                                command::kResetKeys};

} // namespace ui
