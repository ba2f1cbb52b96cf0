// What the command tables of the windows share.
#pragma once

#include "ui/commands/Command.h"

namespace ui {

namespace command {
inline constexpr std::string_view kSave = "save";
inline constexpr std::string_view kStop = "stop";
} // namespace command

inline constexpr std::u16string_view kEverywhere = u"Everywhere";
inline constexpr std::u16string_view kStopText = u"Close a list, stop what runs";

inline constexpr KeyChord kCtrlS{platform::Key::s, {.control = true}};
inline constexpr KeyChord kEsc{platform::Key::escape, {}};

} // namespace ui
