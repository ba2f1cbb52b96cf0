// The commands of the list of keys.
#pragma once

#include <string_view>

#include "core/Texts.h"
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
    {.id = command::kKeys, .text = "Keys"_tr, .keys = {{kF1}}},
    {command::kCopyKeys, {}, "Copy List"_tr, u"ButtonKeysCopy", "Copy these keys as text"_tr},
    {command::kManual, {}, "Manual"_tr, u"ButtonManual", "Open the manual in the browser"_tr},
    {command::kCloseKeys,
     {},
     "Close"_tr,
     u"ButtonKeysClose",
     "Close the list of keys (Esc)"_tr,
     {kEsc}},
    {.id = command::kFind, .text = "Find"_tr, .keys = {{kCtrlF}}},
    {.id = command::kChangeKey, .text = "Change…"_tr, .keys = {{kF2}}},
    {.id = command::kRemoveKey, .text = "Remove"_tr, .keys = {{{platform::Key::del, {}}}}},
    {.id = command::kResetKey, .text = "Reset"_tr},
    {.id = command::kResetKeys, .text = "Reset All Keys"_tr},
};

inline constexpr std::string_view kKeyRows[] = {command::kChangeKey, command::kRemoveKey,
                                                command::kResetKey, command::kLine,
                                                command::kResetKeys};

} // namespace ui
