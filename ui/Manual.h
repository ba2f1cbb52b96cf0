// The author's manual, which lies beside the program as HTML. UI thread only.
#pragma once

#include <string>

namespace ui {

struct WindowContext;

/// Opens it in the user's browser, in the editor's language where there is a translation, else in
/// English, at the page about `window` if it has one; a message box says when that fails.
void openManual(const WindowContext& context, const std::string& window);

} // namespace ui
