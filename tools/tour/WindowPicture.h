// Screenshots of windows with their popups and dialogs.
#pragma once

#include "platform/Bitmap.h"
#include "platform/Window.h"
#include "toolkit/window/WindowImplBase.h"

namespace tour {

/// Draws the picture of `above` at its position over `window`, whose picture is `below`.
void overlay(platform::Bitmap& below, const platform::NativeWindow& window,
             platform::NativeWindow& above);

/// What the window shows, with its open drop list. Its native window exists.
[[nodiscard]] platform::Bitmap pictureOf(toolkit::WindowImplBase& window);

} // namespace tour
