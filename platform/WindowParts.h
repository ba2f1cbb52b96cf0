// The parts of a native window, each for those who need no more than it. They live as long as their
// window, which hands them out. UI thread only.
#pragma once

#include "platform/Accessible.h"
#include "platform/Bitmap.h"
#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"

namespace platform {

/// What the window shows.
class WindowPicture {
public:
    virtual ~WindowPicture() = default;
    /// Asks for a paint of `dirty`, which is in window pixels.
    virtual void invalidate(const Rect& dirty) = 0;
    /// Paints whatever is invalid before it returns.
    virtual void repaintNow() = 0;
    /// Paints the whole window and returns the picture, shown or not.
    [[nodiscard]] virtual Bitmap snapshot() = 0;
    /// A back buffer that suits this window.
    [[nodiscard]] virtual FrameBufferResult createFrameBuffer(Size size) = 0;
};

/// The shape of the pointer over a window.
enum class PointerShape { arrow, text, hand, cross };

/// How the mouse and the keyboard reach the window.
class WindowInput {
public:
    virtual ~WindowInput() = default;
    /// All mouse events go to this window until releaseCapture or a captureLost event; positions
    /// may lie outside.
    virtual void setCapture() = 0;
    virtual void releaseCapture() = 0;
    virtual void setPointer(PointerShape shape) = 0;
    /// The left button went down on the caption: the window follows the pointer until the button
    /// goes up, which it may have done already.
    virtual void beginMove() = 0;
    /// Whether an edit has the focus, and its caret rectangle for the input method's window.
    virtual void setTextInput(bool enabled, const Rect& caret) = 0;
};

class WindowTimers {
public:
    virtual ~WindowTimers() = default;
    /// Sends timer events with `id` every `intervalMs`; starting a running id restarts it. False
    /// when the system refuses.
    virtual bool start(unsigned id, int intervalMs) = 0;
    /// False when no such timer runs.
    virtual bool stop(unsigned id) = 0;
};

class WindowAccessibility {
public:
    virtual ~WindowAccessibility() = default;
    /// Tells assistive technology, if any is listening, that something about `node` changed.
    virtual void changed(Accessible& node, AccessibleChange change) = 0;
};

} // namespace platform
