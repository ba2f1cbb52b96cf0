// What a right click, the menu key or Shift+F10 offers on a control.
#pragma once

#include <span>
#include <string_view>

namespace ui {

struct ContextMenu {
    std::u16string_view control;            ///< it and everything in it
    std::span<const std::string_view> rows; ///< commands; command::kLine is a line
};

} // namespace ui
