// The window system of a test program: the real back end on a headless screen, created on first use
// and closed after the last test.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Gui.h"
#include "platform/testing/TestInput.h"

namespace test {

/// Ends the test program with a message when there is no display.
[[nodiscard]] platform::Gui& gui();
[[nodiscard]] platform::TestInput& input();
/// Closes the window system; automatic after the last test.
void endGui();

/// Handles all pending events and those that they cause.
void pump();
/// Handles events until `done` returns true; false after the time limit of a test.
[[nodiscard]] bool pumpUntil(const std::function<bool()>& done);

/// Press and release of the left button.
void click(platform::NativeWindow& window, platform::Point position,
           platform::Modifiers modifiers = {});
/// Two clicks that the back end recognises as a double click.
void doubleClick(platform::NativeWindow& window, platform::Point position);
/// A drag with the left button: down at `from`, a move to every further point, up at the last one.
void drag(platform::NativeWindow& window, const std::vector<platform::Point>& points);
/// keyDown and keyUp of a key; only the space bar types a character.
void press(platform::NativeWindow& window, platform::Key key, platform::Modifiers modifiers = {});
/// One key per character.
void type(platform::NativeWindow& window, const std::u16string& text);

} // namespace test
