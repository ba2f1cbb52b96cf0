// A row that a window makes for one of its lists.
#pragma once

#include <memory>
#include <string_view>

#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListContainerElementUI.h"

namespace ui {

/// `content` all over the row, which is `height` pixels high and has a line of this tone below.
[[nodiscard]] std::unique_ptr<toolkit::CListContainerElementUI>
makeLinedRow(std::unique_ptr<toolkit::CControlUI> content, int height, std::u16string_view tone);

} // namespace ui
