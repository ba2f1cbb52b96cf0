// Pictures of windows as a person sees them on a screen: popups and dialogs over their window.
#pragma once

#include "platform/Bitmap.h"
#include "platform/Window.h"
#include "toolkit/window/WindowImplBase.h"

namespace tour {

/// Draws the picture of `above` where it stands over `window`, whose picture is `below`.
void layOver(platform::Bitmap& below, const platform::NativeWindow& window,
             platform::NativeWindow& above);

/// What the window shows, with its open drop list. Its native window exists.
[[nodiscard]] platform::Bitmap pictureOf(toolkit::WindowImplBase& window);

} // namespace tour
