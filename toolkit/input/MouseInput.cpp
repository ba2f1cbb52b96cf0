#include "toolkit/input/MouseInput.h"

#include <algorithm>
#include <utility>

#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Popup.h"
#include "toolkit/window/ToolTipWindow.h"

namespace toolkit {
namespace {

using platform::EventKind;
using platform::MouseButton;

TEventUI controlEvent(EventType type, CControlUI* control, const platform::Event& event) {
    return {type, control, event};
}

} // namespace

bool MouseInput::handle(const platform::Event& event) {
    if (event.kind != EventKind::captureLost && event.kind != EventKind::mouseLeave) {
        m_at = event.position;
    }
    switch (event.kind) {
    case EventKind::mouseDown:
    case EventKind::mouseDoubleClick:
        return press(event);
    case EventKind::mouseUp:
        return release(event);
    case EventKind::mouseMove:
        return move(event);
    case EventKind::mouseWheel:
        return wheel(event);
    case EventKind::mouseLeave:
        leave();
        return true;
    case EventKind::captureLost:
        if (m_manager.filter(event)) {
            return true;
        }
        cancelPress();
        return true;
    default:
        return false;
    }
}

/// The order matters: the control that loses the focus commits before anything reacts to the press,
/// and a row is selected before the control in it gets the press; a disabled control gets
/// nothing, but its row is selected all the same. Each step may change the controls, so the one
/// under the pointer is looked up again.
bool MouseInput::press(const platform::Event& event) {
    m_manager.toolTip().hide();
    CControlUI* hit = m_manager.FindControl(event.position);
    if (Popup* popup = m_manager.popup(); popup != nullptr && !popup->holds(hit)) {
        const CControlUI* owner = popup->owner();
        popup->close();
        if (hit == owner && event.button == MouseButton::left) {
            return true;
        }
    }
    m_manager.focusKeeper().press(hit);
    if (!m_manager.takesInput() || m_manager.filter(event)) {
        return true;
    }
    if (event.button != MouseButton::left) {
        return false;
    }
    m_manager.UpdateLayout();
    hit = m_manager.FindControl(event.position);
    if (hit == nullptr) {
        return true;
    }
    if (dragsCaption(hit, event.position)) {
        platform::NativeWindow& window = *m_manager.GetWindow();
        if (event.kind == EventKind::mouseDown) {
            window.input().beginMove();
        } else {
            window.setState(window.state() == platform::WindowState::maximized
                                ? platform::WindowState::normal
                                : platform::WindowState::maximized);
        }
        return true;
    }
    const EventType type =
        event.kind == EventKind::mouseDoubleClick ? EventType::doubleClick : EventType::buttonDown;
    if (notePress(hit, controlEvent(type, hit, event))) {
        return true;
    }
    m_manager.UpdateLayout();
    hit = m_manager.FindControl(event.position);
    if (!m_manager.takesInput() || hit == nullptr || !hit->IsEnabled()) {
        return true;
    }
    m_pressed = hit;
    m_manager.SetCapture();
    hit->DoEvent(controlEvent(type, hit, event));
    return true;
}

/// Each may remove the others.
bool MouseInput::notePress(CControlUI* hit, const TEventUI& event) {
    std::vector<CControlUI*> chain;
    for (CControlUI* control = hit; control != nullptr; control = control->GetParent()) {
        chain.push_back(control);
    }
    for (CControlUI* control : chain) {
        if (control->GetManager() == &m_manager && control->notePress(event)) {
            return true;
        }
    }
    return false;
}

bool MouseInput::release(const platform::Event& event) {
    if (m_manager.filter(event)) {
        return true;
    }
    if (event.button != MouseButton::left || m_pressed == nullptr) {
        return false;
    }
    CControlUI* pressed = m_pressed;
    m_pressed = nullptr;
    m_manager.ReleaseCapture();
    Popup* popup = m_manager.popup();
    if (popup != nullptr && popup->owner() == pressed &&
        !pressed->GetPos().contains(event.position)) {
        popup->dropAt(m_manager.toScreen(event.position));
    }
    pressed->DoEvent(controlEvent(EventType::buttonUp, pressed, event));
    if (m_manager.takesInput()) {
        m_manager.UpdateLayout();
        setHot(m_manager.FindControl(event.position), event);
    }
    return true;
}

bool MouseInput::move(const platform::Event& event) {
    if (m_manager.filter(event)) {
        return true;
    }
    if (m_pressed != nullptr) {
        Popup* popup = m_manager.popup();
        if (popup != nullptr && popup->owner() == m_pressed) {
            popup->dragOver(m_manager.toScreen(event.position));
        }
        m_pressed->DoEvent(controlEvent(EventType::mouseMove, m_pressed, event));
        return true;
    }
    CControlUI* hit = m_manager.FindControl(event.position);
    setHot(hit, event);
    m_manager.toolTip().pointerAt(m_manager.FindControl(event.position, Meeting::tip),
                                  event.position);
    if (hit != nullptr && hit->IsEnabled()) {
        hit->DoEvent(controlEvent(EventType::mouseMove, hit, event));
    }
    return true;
}

bool MouseInput::wheel(const platform::Event& event) {
    m_manager.toolTip().hide();
    if (Popup* popup = m_manager.popup()) {
        popup->wheel(event.wheelDelta);
        return true;
    }
    if (m_manager.filter(event)) {
        return true;
    }
    CControlUI* control = m_manager.FindControl(event.position);
    for (; control != nullptr; control = control->GetParent()) {
        if (control->IsEnabled() &&
            control->DoEvent(controlEvent(EventType::wheel, control, event))) {
            m_manager.UpdateLayout();
            setHot(m_manager.FindControl(event.position), event);
            return true;
        }
    }
    return false;
}

void MouseInput::setHot(CControlUI* control, const platform::Event& event) {
    std::vector<CControlUI*> chain;
    for (CControlUI* c = control; c != nullptr; c = c->GetParent()) {
        if (c->IsEnabled()) {
            chain.push_back(c);
        }
    }
    const std::vector<CControlUI*> old = std::exchange(m_hot, chain);
    const auto holds = [](const std::vector<CControlUI*>& list, CControlUI* c) {
        return std::find(list.begin(), list.end(), c) != list.end();
    };
    for (CControlUI* c : old) {
        if (!holds(chain, c)) {
            c->DoEvent(controlEvent(EventType::mouseLeave, c, event));
        }
    }
    for (CControlUI* c : chain) {
        if (!holds(old, c)) {
            c->DoEvent(controlEvent(EventType::mouseEnter, c, event));
        }
    }
}

void MouseInput::showPointer() {
    const CControlUI* control = m_pressed != nullptr ? m_pressed : hot();
    const platform::PointerShape shape = control != nullptr && control->IsEnabled()
                                             ? control->pointerShapeAt(m_at)
                                             : platform::PointerShape::arrow;
    platform::NativeWindow* window = m_manager.GetWindow();
    if (window != nullptr && shape != m_shape) {
        m_shape = shape;
        window->input().setPointer(shape);
    }
}

void MouseInput::forget(const CControlUI& control) {
    std::erase(m_hot, &control);
    if (m_pressed == &control) {
        m_pressed = nullptr;
        m_manager.ReleaseCapture();
    }
}

void MouseInput::clearHot(const CControlUI& control) {
    std::erase_if(m_hot, [&](const CControlUI* hot) { return hot->isInside(&control); });
}

void MouseInput::cancelPress() {
    if (CControlUI* pressed = std::exchange(m_pressed, nullptr)) {
        pressed->DoEvent(controlEvent(EventType::captureLost, pressed, {}));
    }
}

void MouseInput::leave() {
    m_manager.toolTip().pointerAt(nullptr, {});
    setHot(nullptr, {});
}

bool MouseInput::takesPress(platform::Point at) const {
    const CControlUI* control = m_manager.FindControl(at);
    while (control != nullptr && !control->takesPressAt(at)) {
        control = control->GetParent();
    }
    return control != nullptr;
}

bool MouseInput::dragsCaption(const CControlUI* hit, platform::Point at) const {
    if (!m_manager.captionRect().contains(at)) {
        return false;
    }
    for (const CControlUI* control = hit; control != nullptr; control = control->GetParent()) {
        if (control->isInteractive()) {
            return false;
        }
    }
    return true;
}

} // namespace toolkit
