// The commands of the window of settings.
#pragma once

#include <string_view>

#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kSettingsClose = "settingsClose";
inline constexpr std::string_view kChooseConverter = "chooseConverter";
} // namespace command

inline constexpr Command kSettingsCommands[] = {
    {command::kSettingsClose,
     {},
     u"Close",
     u"ButtonSettingsClose",
     u"Close the settings (Esc)",
     {kEsc}},
    {command::kChooseConverter,
     {},
     u"Choose…",
     u"ButtonFindConverter",
     u"Choose the program ffmpeg"},
};

} // namespace ui
