// The commands of the window of earlier versions.
#pragma once

#include <string_view>

#include "ui/commands/Command.h"
#include "ui/commands/CommonCommands.h"

namespace ui {

namespace command {
inline constexpr std::string_view kRestoreVersion = "restoreVersion";
inline constexpr std::string_view kCloseVersions = "closeVersions";
} // namespace command

inline constexpr Command kEarlierVersionsCommands[] = {
    {command::kRestoreVersion,
     {},
     u"Restore",
     u"ButtonRestoreVersion",
     u"Bring this version back; Undo takes that back"},
    {command::kCloseVersions,
     {},
     u"Close",
     u"ButtonVersionsClose",
     u"Back to the editor (Esc)",
     {kEsc}},
};

inline constexpr std::string_view kVersionRows[] = {command::kRestoreVersion};

} // namespace ui
