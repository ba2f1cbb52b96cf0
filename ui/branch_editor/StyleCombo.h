// The look of every combo that is made in code rather than by a layout.
#pragma once

namespace toolkit {
class CComboUI;
}

namespace ui {

/// Sets images, colours, width and padding; `dropHeight` is the most that the open list takes, in
/// pixels. The images are files of the skin folder.
void StyleCombo(toolkit::CComboUI& combo, int dropHeight);

} // namespace ui
