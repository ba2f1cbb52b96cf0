// The commands of the window of earlier versions.
#pragma once

#include <string_view>

#include "core/Texts.h"
#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/MapCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kRestoreVersion = "restoreVersion";
inline constexpr std::string_view kCloseVersions = "closeVersions";
} // namespace command

inline constexpr Command kEarlierVersionsCommands[] = {
    {command::kRestoreVersion,
     {},
     "Restore"_tr,
     u"ButtonRestoreVersion",
     "Bring this version back; Undo takes that back"_tr},
    {command::kCloseVersions,
     {},
     "Close"_tr,
     u"ButtonVersionsClose",
     "Back to the editor (Esc)"_tr,
     {kEsc}},
    withoutButton(kMapFitCommand),
    withoutButton(kMapInCommand),
    withoutButton(kMapOutCommand),
};

inline constexpr std::string_view kVersionRows[] = {command::kRestoreVersion};
inline constexpr std::string_view kVersionMapRows[] = {
    command::kMapFit, command::kMapIn, command::kMapOut, command::kLine, command::kRestoreVersion};

} // namespace ui
