// Sees a window's input before its controls do.
#pragma once

#include "platform/Event.h"

namespace toolkit {

class IMessageFilterUI {
public:
    virtual ~IMessageFilterUI() = default;
    /// Returns true when the event was handled; no control sees it then. Called
    /// - for mouseDown and mouseDoubleClick after an edit that loses the focus has sent
    ///   "killfocus" and an open drop list has closed;
    /// - for keys and text unless a drop list is open, which keeps them;
    /// - for everything else before anything happens.
    virtual bool MessageHandler(const platform::Event& event) = 0;
};

} // namespace toolkit
