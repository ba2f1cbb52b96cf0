// The author's manual, which lies beside the program as HTML. UI thread only.
#pragma once

#include <string>

namespace platform {
class Gui;
}

namespace ui {

/// Opens it in the user's browser, at the page about `window` if it has one; a message box says
/// when that fails.
void openManual(platform::Gui& gui, const std::string& window);

} // namespace ui
