// A list or menu that hangs on a control of a window, in a native window of its own. The keyboard
// stays with the window below, whose paint manager passes on what belongs to the popup.
#pragma once

#include "platform/Geometry.h"

namespace toolkit {

class CControlUI;

class Popup {
public:
    virtual ~Popup() = default;

    /// The control it hangs on, which gets all keys meanwhile; null while it is closed.
    [[nodiscard]] virtual CControlUI* owner() const = 0;
    /// Hides it; nothing is picked and nothing is sent.
    virtual void close() = 0;
    virtual void wheel(int delta) = 0;
    /// Moves and the release of a press that began on the owner, in screen pixels.
    virtual void dragOver(platform::Point screen) = 0;
    virtual void dropAt(platform::Point screen) = 0;
};

} // namespace toolkit
