// Turns one report of an input method into window events. Used by the back ends.
#pragma once

#include <functional>
#include <string>

#include "platform/Event.h"

namespace platform {

struct Composition {
    std::u16string preedit;   ///< not committed yet
    std::u16string committed; ///< final
};

/// Sends the end of the previous preedit text, the committed text and the new preedit text, leaving
/// out what is empty. The caller keeps `hasPreedit` between reports. `send` returns false when the
/// window is gone, and nothing is sent after that.
void sendComposition(const Composition& report, Modifiers modifiers, bool& hasPreedit,
                     const std::function<bool(const Event&)>& send);

} // namespace platform
