// A list or menu attached to a control of a window, which forwards the popup's input to it: in a
// native window of its own, or among the window's controls.
#pragma once

#include "platform/Geometry.h"

namespace toolkit {

class CControlUI;
struct TEventUI;

class Popup {
public:
    virtual ~Popup() = default;

    /// The control it is attached to; null while closed.
    [[nodiscard]] virtual CControlUI* owner() const = 0;
    /// Gets all keys and typed text while it is open. True when the event was handled.
    virtual bool key(const TEventUI& event) = 0;
    /// Whether `control` of the window is part of it: a press there does not close it.
    [[nodiscard]] virtual bool holds(const CControlUI* control) const = 0;
    /// Hides it; picks and sends nothing.
    virtual void close() = 0;
    virtual void wheel(int delta) = 0;
    /// Moves and the release of a press that began on the owner, in screen pixels.
    virtual void dragOver(platform::Point screen) = 0;
    virtual void dropAt(platform::Point screen) = 0;
};

} // namespace toolkit
