// The commands of the window of settings.
#pragma once

#include <string_view>

#include "core/Texts.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kSettingsClose = "settingsClose";
inline constexpr std::string_view kChooseConverter = "chooseConverter";
inline constexpr std::string_view kChooseScenesFolder = "chooseScenesFolder";
} // namespace command

inline constexpr Command kSettingsCommands[] = {
    {command::kSettingsClose,
     {},
     "Close"_tr,
     u"ButtonSettingsClose",
     "Close the settings (Esc)"_tr,
     {kEsc}},
    {command::kChooseConverter,
     {},
     "Choose…"_tr,
     u"ButtonFindConverter",
     "Choose the program ffmpeg"_tr},
    {command::kChooseScenesFolder,
     {},
     "Change…"_tr,
     u"ButtonScenesFolder",
     "Choose another folder for scenes and settings"_tr},
};

} // namespace ui
