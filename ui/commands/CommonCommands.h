// What the command tables of the windows share.
#pragma once

#include "ui/commands/Command.h"

namespace ui {

namespace command {
inline constexpr std::string_view kSave = "save";
inline constexpr std::string_view kExit = "exit";
inline constexpr std::string_view kStop = "stop";
inline constexpr std::string_view kManual = "manual";
} // namespace command

inline constexpr std::u16string_view kEverywhere = u"Everywhere";
inline constexpr std::u16string_view kStopText = u"Close a list, stop what runs";

inline constexpr KeyChord kCtrlS{platform::Key::s, {.control = true}};
inline constexpr KeyChord kEsc{platform::Key::escape, {}};

/// What every window runs, besides its own table.
inline constexpr Command kCommonCommands[] = {
    {.id = command::kManual,
     .group = kEverywhere,
     .text = u"Manual",
     .keys = {{{platform::Key::f1, {.shift = true}}}}},
};

} // namespace ui
