// How a window's events are dispatched: to the tool tip, an open popup, the message filters and the
// controls.
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "platform/Window.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/input/MouseInput.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/ControlTimers.h"
#include "toolkit/window/Popup.h"
#include "toolkit/window/ToolTipWindow.h"

namespace toolkit {
namespace {

using platform::EventKind;
using platform::Key;

EventType controlType(EventKind kind) {
    switch (kind) {
    case EventKind::keyDown:
        return EventType::keyDown;
    case EventKind::keyUp:
        return EventType::keyUp;
    case EventKind::textInput:
        return EventType::textInput;
    case EventKind::textPreedit:
        return EventType::textPreedit;
    default:
        return EventType::none;
    }
}

} // namespace

bool isMenuKey(const platform::Event& event) {
    return event.key == Key::menu || (event.key == Key::f10 && event.modifiers.shift);
}

bool CPaintManagerUI::MessageHandler(const platform::Event& event) {
    if (!takesInput()) {
        return false;
    }
    const Busy busy(this);
    UpdateLayout();
    const bool handled = dispatch(event);
    m_mouse.showPointer();
    return handled;
}

bool CPaintManagerUI::dispatch(const platform::Event& event) {
    switch (event.kind) {
    case EventKind::keyDown:
    case EventKind::keyUp:
    case EventKind::textInput:
    case EventKind::textPreedit:
        return handleKey(event);
    case EventKind::timer:
        handleTimer(event);
        return true;
    case EventKind::resized:
        m_toolTip->hide();
        closePopup();
        if (m_window->state() != platform::WindowState::minimized) {
            SetWindowSize(m_window->geometry().size());
        }
        return filter(event);
    case EventKind::appearanceChanged:
        m_toolTip->hide();
        m_look.SetDark(m_gui.windows().isDark());
        Invalidate(platform::Rect::at(0, 0, m_windowSize.width, m_windowSize.height));
        return true;
    case EventKind::activated:
        m_focus.windowActivated();
        return filter(event);
    case EventKind::deactivated:
        m_toolTip->hide();
        closePopup();
        m_mouse.cancelPress();
        m_focus.windowDeactivated();
        return filter(event);
    case EventKind::filesDropped: // the window's own
    case EventKind::closeRequest:
    case EventKind::destroyed:
        return false;
    default:
        return m_mouse.handle(event);
    }
}

bool CPaintManagerUI::handleKey(const platform::Event& event) {
    const EventType type = controlType(event.kind);
    if (event.kind == EventKind::keyDown) {
        m_toolTip->hide();
    }
    if (Popup* open = popup()) {
        return open->key({type, open->owner(), event});
    }
    if (event.kind == EventKind::keyDown && isMenuKey(event)) {
        m_focus.setKeyboardUse(true); // a menu that it opens starts at its first row
    }
    if (filter(event)) {
        return true;
    }
    const bool tab = event.kind == EventKind::keyDown && event.key == Key::tab &&
                     !event.modifiers.control && !event.modifiers.alt;
    if (event.kind == EventKind::keyDown && event.key != Key::other) {
        m_focus.setKeyboardUse(true);
    }
    if (tab) {
        return m_focus.move(event.modifiers.shift);
    }
    for (CControlUI* control = GetFocus(); control != nullptr; control = control->GetParent()) {
        if (control->DoEvent({type, control, event})) {
            return true;
        }
        if (control->GetManager() != this) {
            break; // removed by its own handler
        }
    }
    return false;
}

void CPaintManagerUI::handleTimer(const platform::Event& event) {
    if (event.timerId == ToolTipWindow::kTimerId) {
        m_toolTip->timeOver();
        return;
    }
    const ControlTimers::Owner owner = m_timers.ownerOf(event.timerId);
    if (owner.control != nullptr) {
        platform::Event native = event;
        native.timerId = owner.id;
        owner.control->DoEvent({UIEVENT_TIMER, owner.control, native});
    }
}

} // namespace toolkit
