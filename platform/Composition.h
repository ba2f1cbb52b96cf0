// What an input method reports at once, as the events of a window. Used by the back ends.
#pragma once

#include <functional>
#include <string>

#include "platform/Event.h"

namespace platform {

struct Composition {
    std::u16string preedit;   ///< not committed yet
    std::u16string committed; ///< typed for good
};

/// Sends, as far as there is any: the end of the former preedit text, the committed text, the new
/// preedit text. `hasPreedit` is kept from report to report. `send` returns false when the window
/// is gone; nothing follows then.
void sendComposition(const Composition& report, Modifiers modifiers, bool& hasPreedit,
                     const std::function<bool(const Event&)>& send);

} // namespace platform
