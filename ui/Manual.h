// The author's manual, which lies beside the program as HTML. UI thread only.
#pragma once

namespace platform {
class Gui;
}

namespace ui {

/// Opens it in the user's browser; a message box says when that fails.
void openManual(platform::Gui& gui);

} // namespace ui
