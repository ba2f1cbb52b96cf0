// Pictures of windows as a person sees them on a screen: popups and dialogs over their window.
#pragma once

#include <string_view>

#include "platform/Bitmap.h"
#include "platform/Window.h"
#include "toolkit/WindowImplBase.h"

namespace screenshots {

/// Shows `window` and waits until it is there.
void show(toolkit::WindowImplBase& window);

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

/// A click in the middle of the control `name`.
void click(toolkit::WindowImplBase& window, std::u16string_view name);
/// Brings the keyboard to the control `name` with the Tab key.
void tabTo(toolkit::WindowImplBase& window, std::u16string_view name);

} // namespace screenshots
