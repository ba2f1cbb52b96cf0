// Receives the notifications of a window's controls.
#pragma once

#include "toolkit/window/Notification.h"

namespace toolkit {

class INotifyUI {
public:
    virtual ~INotifyUI() = default;
    /// UI thread, inside the call that caused it. May remove controls (also the sender) and close
    /// the window.
    virtual void Notify(TNotifyUI& message) = 0;
};

} // namespace toolkit
