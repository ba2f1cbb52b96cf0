// What a window offers by keys and menus.
#pragma once

#include <span>
#include <string_view>

#include "ui/commands/Command.h"

namespace ui {

/// What a right click, the menu key or Shift+F10 offers on a control.
struct ContextMenu {
    std::u16string_view control;            ///< it and everything in it
    std::span<const std::string_view> rows; ///< commands; command::kLine is a line
};

/// All are constants.
struct WindowTables {
    std::span<const Command> commands{};
    /// The menus of its controls. Elsewhere the menu keys open the window's menu.
    std::span<const ContextMenu> contextMenus{};
    /// The parts that F6 goes to, by the control that each begins with, in layout order.
    std::span<const std::u16string_view> panes{};
};

} // namespace ui
