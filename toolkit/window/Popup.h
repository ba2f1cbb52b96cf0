// A list or menu attached to a control of a window, in a native window of its own. The focus stays
// with the window below, whose paint manager forwards the popup's input.
#pragma once

#include "platform/Geometry.h"

namespace toolkit {

class CControlUI;

class Popup {
public:
    virtual ~Popup() = default;

    /// The control it is attached to, which gets all keys meanwhile; null while closed.
    [[nodiscard]] virtual CControlUI* owner() const = 0;
    /// Hides it; picks and sends nothing.
    virtual void close() = 0;
    virtual void wheel(int delta) = 0;
    /// Moves and the release of a press that began on the owner, in screen pixels.
    virtual void dragOver(platform::Point screen) = 0;
    virtual void dropAt(platform::Point screen) = 0;
};

} // namespace toolkit
