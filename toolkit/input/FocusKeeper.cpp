#include "toolkit/input/FocusKeeper.h"

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

/// Hidden and disabled controls hold no stops.
CControlUI* firstInside(const CControlUI& parent, bool backward) {
    return parent.isShown() && parent.isOwnEnabled() ? parent.childBeside(nullptr, backward)
                                                     : nullptr;
}

/// The last control of the tree below `control`, which may be the tree itself.
CControlUI* lastBelow(CControlUI* control) {
    while (CControlUI* child = firstInside(*control, true)) {
        control = child;
    }
    return control;
}

/// The control after (or before) `from` in layout order, round at the ends.
CControlUI* beside(CControlUI& root, CControlUI* from, bool backward) {
    if (CControlUI* child = backward ? nullptr : firstInside(*from, false)) {
        return child;
    }
    for (CControlUI* at = from; at != &root; at = at->GetParent()) {
        if (CControlUI* next = at->GetParent()->childBeside(at, backward)) {
            return backward ? lastBelow(next) : next;
        }
        if (backward) {
            return at->GetParent();
        }
    }
    return backward ? lastBelow(&root) : &root;
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
    CControlUI* origin = m_focused != nullptr ? m_focused : m_origin;
    CControlUI* next = origin != nullptr ? origin : root;
    for (int rounds = 0; rounds < 2; rounds += next == root ? 1 : 0) {
        next = beside(*root, next, backward);
        if (isStop(*next)) {
            set(next);
            return true;
        }
    }
    return false;
}

bool FocusKeeper::enter(CControlUI& pane) {
    CControlUI* stop = &pane;
    while (!isStop(*stop)) {
        stop = beside(pane, stop, false);
        if (stop == &pane) {
            return false;
        }
    }
    set(stop);
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

bool FocusKeeper::remembers(const CControlUI& control) const {
    for (const CControlUI* kept : {m_focused, m_next, m_origin, m_restore}) {
        if (kept != nullptr && kept->isInside(&control)) {
            return true;
        }
    }
    return false;
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
