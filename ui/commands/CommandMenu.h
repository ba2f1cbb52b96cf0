// The rows of a window's menu, made from its commands.
#pragma once

#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

#include "toolkit/controls/CMenuUI.h"

namespace ui {

class CommandSet;

/// A row for each of the commands `ids` that has a handler in one of `sets`, which outlive what the
/// rows run; command::kLine is a line. Rows are enabled as the commands are now. No line is first,
/// last or doubled.
[[nodiscard]] std::vector<toolkit::MenuEntry> menuEntries(std::initializer_list<CommandSet*> sets,
                                                          std::span<const std::string_view> ids);

} // namespace ui
