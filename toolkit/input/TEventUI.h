// Input and life-cycle events as a control sees them.
#pragma once

#include "platform/Event.h"

namespace toolkit {

class CControlUI;

enum class EventType {
    none = 0,
    mouseEnter, ///< the pointer came onto the control or something inside it
    mouseLeave,
    mouseMove,
    buttonDown,  ///< left button
    buttonUp,    ///< left button; goes to the control that was pressed, wherever the pointer is
    doubleClick, ///< the second press of a pair, in place of buttonDown
    wheel,
    keyDown,
    keyUp,
    textInput,
    textPreedit,
    setFocus,
    killFocus,
    captureLost, ///< the press was taken away: no buttonUp follows
    timer = 24,
};
inline constexpr EventType UIEVENT_TIMER = EventType::timer;

struct TEventUI {
    EventType Type = EventType::none;
    CControlUI* pSender = nullptr; ///< the control the event was meant for; not owned
    platform::Event native;        ///< position in window pixels; timerId is the control's own
};

} // namespace toolkit
