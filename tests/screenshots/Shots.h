// Pictures of windows as a person sees them on a screen: popups and dialogs over their window.
#pragma once

#include "platform/Bitmap.h"
#include "platform/Window.h"
#include "toolkit/WindowImplBase.h"

namespace screenshots {

/// Handles events until the window's picture has stayed the same for a while: a video frame that
/// was asked for has arrived by then.
void settle(toolkit::WindowImplBase& window);

/// What the window shows, with its open drop list.
[[nodiscard]] platform::Bitmap pictureOf(toolkit::WindowImplBase& window);

/// Draws the picture of `above` where it stands over `below`.
void drawOver(platform::Bitmap& below, platform::NativeWindow& belowWindow,
              platform::NativeWindow& above);

/// Empties every text that the window shows and takes the blinking caret out of an edit.
void wipeTexts(toolkit::WindowImplBase& window);

} // namespace screenshots
