// Real input for tests and guided tours: each call queues one event with the window system's own
// types, so it passes through the back end just like a user's mouse or keyboard. The event
// arrives once the loop runs (EventLoop::processEvents or run), in the order of the calls.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Event.h"
#include "platform/Geometry.h"

namespace platform {

class Gui;
class NativeWindow;

/// UI thread only. Windows are not owned; an event whose window is gone by then is dropped.
class TestInput {
public:
    virtual ~TestInput() = default;

    /// Moves the pointer to `position` (layout pixels, may lie outside) and, for the kinds
    /// mouseDown, mouseUp and mouseDoubleClick, works `button` there. mouseDoubleClick is the
    /// second press and needs the first press and both releases around it, as from a user. Two
    /// mouseDown events never make a double click, however fast the test is.
    virtual void mouse(NativeWindow& window, EventKind kind, Point position,
                       MouseButton button = MouseButton::left, Modifiers modifiers = {}) = 0;
    /// `delta` as in Event::wheelDelta.
    virtual void wheel(NativeWindow& window, Point position, int delta,
                       Modifiers modifiers = {}) = 0;
    /// One keyDown or keyUp. `text` is what a keyDown types; empty for keys that type nothing.
    virtual void key(NativeWindow& window, EventKind kind, Key key, const std::u16string& text = {},
                     Modifiers modifiers = {}) = 0;
    /// Text from an input method: shown as not yet committed, or committed.
    virtual void preedit(NativeWindow& window, const std::u16string& text) = 0;
    virtual void commit(NativeWindow& window, const std::u16string& text) = 0;
    /// Drags these files into the window and drops them there; absolute paths, UTF-8.
    virtual void dropFiles(NativeWindow& window, const std::vector<std::string>& files) = 0;
    /// What the task bar or the window manager does; false brings the window up again.
    virtual void minimize(NativeWindow& window, bool minimized) = 0;
    /// What the close box, Alt+F4 or the window manager asks.
    virtual void requestClose(NativeWindow& window) = 0;
};

/// Input into the windows of `gui`, which must outlive it.
[[nodiscard]] std::unique_ptr<TestInput> createTestInput(Gui& gui);

} // namespace platform
