// Keys and modifiers between virtual key codes and our events.
#pragma once

#include <windows.h>

#include "platform/Event.h"

namespace platform::win32 {

[[nodiscard]] Key keyFromNative(WPARAM virtualKey);
/// 0 for Key::other.
[[nodiscard]] WPARAM keyToNative(Key key);
/// As they were when the message being handled was made.
[[nodiscard]] Modifiers currentModifiers();

} // namespace platform::win32
