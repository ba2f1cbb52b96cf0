#include "toolkit/input/FocusKeeper.h"

#include <algorithm>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/skin/SkinImage.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {
namespace {

bool isStop(const CControlUI& control) {
    return control.isTabStop() && control.CanTakeFocus();
}

/// The stops inside `parent` in layout order, and `origin` even when it is none.
void collectStops(CControlUI& parent, const CControlUI* origin, std::vector<CControlUI*>& stops) {
    if (isStop(parent) || &parent == origin) {
        stops.push_back(&parent);
    }
    for (int i = 0; i < parent.childCount(); ++i) {
        collectStops(*parent.childAt(i), origin, stops);
    }
}

TEventUI focusEvent(EventType type, CControlUI* control) {
    TEventUI event;
    event.Type = type;
    event.pSender = control;
    return event;
}

} // namespace

void FocusKeeper::set(CControlUI* control, bool reveals) {
    const CPaintManagerUI::Busy busy(&m_manager);
    if (control != nullptr && !control->CanTakeFocus()) {
        control = nullptr;
    }
    if (control == m_focused) {
        return;
    }
    m_next = control;
    if (CControlUI* old = m_focused) {
        invalidateRing();
        m_origin = old;
        m_focused = nullptr;
        old->DoEvent(focusEvent(EventType::killFocus, old));
    }
    // The handler may have moved the focus itself, or removed the new control.
    if (m_focused == nullptr && m_next != nullptr && m_next->CanTakeFocus()) {
        m_focused = m_next;
        m_next = nullptr;
        m_focused->DoEvent(focusEvent(EventType::setFocus, m_focused));
        if (m_focused != nullptr) {
            if (reveals) {
                m_focused->reveal(*m_focused);
            }
            if (platform::NativeWindow* window = m_manager.GetWindow()) {
                window->accessibility().changed(*m_focused, platform::AccessibleChange::focus);
            }
        }
        invalidateRing();
    }
    endTextInput();
}

void FocusKeeper::takeText() {
    const CPaintManagerUI::Busy busy(
        &m_manager); // the field may be removed, and is looked at after
    CControlUI* field = m_focused;
    if (field == nullptr || !field->takesText()) {
        return;
    }
    set(nullptr);
    if (m_focused == nullptr && field->GetManager() == &m_manager) {
        set(field, false);
    }
}

void FocusKeeper::drop() {
    invalidateRing();
    m_origin = m_focused;
    m_focused = nullptr;
    endTextInput();
}

void FocusKeeper::endTextInput() const {
    platform::NativeWindow* window = m_manager.GetWindow();
    if (window != nullptr && (m_focused == nullptr || !m_focused->takesText())) {
        window->input().setTextInput(false, {});
    }
}

bool FocusKeeper::move(bool backward) {
    CControlUI* root = m_manager.GetRoot();
    if (root == nullptr) {
        return false;
    }
    const CControlUI* origin = m_focused != nullptr ? m_focused : m_origin;
    std::vector<CControlUI*> stops;
    collectStops(*root, origin, stops);
    if (backward) {
        std::reverse(stops.begin(), stops.end());
    }
    const auto at = std::find(stops.begin(), stops.end(), origin);
    if (at != stops.end()) {
        std::rotate(stops.begin(), at + 1, stops.end());
    }
    const auto next = std::find_if(stops.begin(), stops.end(),
                                   [](const CControlUI* control) { return isStop(*control); });
    if (next == stops.end()) {
        return false;
    }
    set(*next);
    return true;
}

bool FocusKeeper::enter(CControlUI& pane) {
    std::vector<CControlUI*> stops;
    collectStops(pane, nullptr, stops);
    if (stops.empty()) {
        return false;
    }
    set(stops.front());
    return true;
}

void FocusKeeper::press(CControlUI* hit) {
    setKeyboardUse(false);
    for (CControlUI* control = hit; control != nullptr; control = control->GetParent()) {
        if (control->CanTakeFocus()) {
            set(control, false);
            return;
        }
    }
    if (m_focused != nullptr && m_focused->takesText()) {
        set(nullptr);
    }
}

void FocusKeeper::forget(const CControlUI& control) {
    for (CControlUI** kept : {&m_focused, &m_next, &m_origin, &m_restore}) {
        if (*kept == &control) {
            *kept = nullptr;
        }
    }
}

void FocusKeeper::windowDeactivated() {
    CControlUI* focused = m_focused;
    set(nullptr);
    m_restore = focused != nullptr && focused->GetManager() == &m_manager ? focused : nullptr;
}

void FocusKeeper::windowActivated() {
    if (m_focused == nullptr && m_restore != nullptr) {
        set(m_restore, false); // a press may have brought the window back
    }
    m_restore = nullptr;
}

void FocusKeeper::clear() {
    m_focused = m_next = m_origin = m_restore = nullptr;
}

void FocusKeeper::setKeyboardUse(bool used) {
    if (m_keyboardUse != used) {
        m_keyboardUse = used;
        invalidateRing();
    }
}

bool FocusKeeper::showsRing() const {
    return m_focused != nullptr && (m_keyboardUse || m_focused->takesText());
}

platform::Rect FocusKeeper::ringRect() const {
    if (m_focused == nullptr) {
        return {};
    }
    const SkinImage* image = m_manager.look().GetImage(m_manager.focusedImageFor(*m_focused));
    return image != nullptr ? image->placeIn(m_focused->GetPos()) : platform::Rect{};
}

void FocusKeeper::invalidateRing() const {
    if (m_focused != nullptr) {
        m_manager.Invalidate(ringRect().united(m_focused->GetPos()));
    }
}

} // namespace toolkit
