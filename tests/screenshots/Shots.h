// What makes pictures of windows the same each time.
#pragma once

#include "toolkit/window/WindowImplBase.h"

namespace screenshots {

/// Handles events until the window's picture has stayed the same for a while: a video frame that
/// was asked for has arrived by then.
void settle(toolkit::WindowImplBase& window);

/// Empties every text that the window shows and takes the blinking caret out of an edit.
void wipeTexts(toolkit::WindowImplBase& window);

} // namespace screenshots
