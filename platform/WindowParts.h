// The parts of a native window, so that callers depend on no more than they use. The window owns
// them. UI thread only.
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
    /// Asks for a paint of `dirty`, which is in layout pixels.
    virtual void invalidate(const Rect& dirty) = 0;
    /// Paints whatever is invalid before it returns.
    virtual void repaintNow() = 0;
    /// Paints the whole window and returns the picture in pixels of the screen, shown or not.
    [[nodiscard]] virtual Bitmap snapshot() = 0;
    /// A back buffer that suits this window.
    [[nodiscard]] virtual FrameBufferResult createFrameBuffer(Size size) = 0;
};

/// The shape of the pointer over a window: what a press would do there.
enum class PointerShape {
    arrow,
    text,        ///< puts the caret there
    hand,        ///< leads somewhere
    move,        ///< takes hold of something
    addPoint,    ///< adds a point there
    deletePoint, ///< deletes that point
    sizeAcross,  ///< takes hold of an upright edge
    sizeDown,    ///< of a level one
    scale,       ///< makes something larger or smaller
    rotate,      ///< turns it
    rectangle,   ///< draws one
    link,        ///< leads something elsewhere
    notAllowed,  ///< does nothing
};

/// How the mouse and the keyboard reach the window.
class WindowInput {
public:
    virtual ~WindowInput() = default;
    /// All mouse events go to this window until releaseCapture or a captureLost event; positions
    /// may lie outside.
    virtual void setCapture() = 0;
    virtual void releaseCapture() = 0;
    virtual void setPointer(PointerShape shape) = 0;
    /// Call when the left button goes down on the caption: the window follows the pointer until the
    /// button is released, which may have happened already.
    virtual void beginMove() = 0;
    /// Says whether an edit has the focus, and where its caret is, for the input method's window.
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
    /// Notifies assistive technology, if any is listening, of a change to `node`.
    virtual void changed(Accessible& node, AccessibleChange change) = 0;
};

} // namespace platform
