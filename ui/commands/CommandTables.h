// The command tables of all windows, for what concerns more than one: keys that clash, the list of
// keys.
#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "ui/commands/Command.h"

namespace ui {

/// Of each window its own table; first what every window runs besides.
[[nodiscard]] std::span<const std::span<const Command>> commandTables();

/// Calls `visit` for every command that can run in a window that runs the command `id`, that one
/// included; some more than once. Stops when it returns true, and returns true then.
bool anyCommandBeside(std::string_view id, const std::function<bool(const Command&)>& visit);

} // namespace ui
