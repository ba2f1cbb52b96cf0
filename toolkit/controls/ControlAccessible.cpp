// What a control tells assistive technology about itself, unless its kind overrides it.
#include <string>

#include "platform/Accessible.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {

void CControlUI::accessibleChanged(platform::AccessibleChange change) {
    if (m_manager != nullptr && m_manager->GetWindow() != nullptr) {
        m_manager->GetWindow()->accessibility().changed(*this, change);
    }
}

void CControlUI::announce(bool urgent) {
    accessibleChanged(urgent ? platform::AccessibleChange::alert
                             : platform::AccessibleChange::news);
}

platform::AccessibleRole CControlUI::accessibleRole() const {
    // Bands and lines say nothing; only what has a name is worth a word.
    return givenName().empty() ? platform::AccessibleRole::group
                               : platform::AccessibleRole::picture;
}

const std::u16string& CControlUI::givenName() const {
    return !m_label.empty() ? m_label : m_toolTip;
}

std::u16string CControlUI::accessibleName() const {
    return givenName();
}

platform::AccessibleState CControlUI::accessibleState() const {
    platform::AccessibleState state;
    state.enabled = IsEnabled();
    state.visible = IsVisible();
    state.focusable = isFocusable() && state.enabled;
    state.focused = IsFocused();
    return state;
}

platform::Accessible* CControlUI::accessibleChild(int index) const {
    return childAt(index);
}

platform::Rect CControlUI::accessibleRect() const {
    for (CControlUI* around = m_parent; around != nullptr; around = around->m_parent) {
        around->settle(*this);
    }
    return m_pos;
}

platform::Accessible* CControlUI::accessibleFocused() {
    CControlUI* focused = m_manager != nullptr ? m_manager->GetFocus() : nullptr;
    return focused != nullptr && focused->isInside(this) ? focused : nullptr;
}

void CControlUI::accessibleFocus() {
    if (m_manager != nullptr && CanTakeFocus()) {
        const CPaintManagerUI::Busy busy(m_manager);
        m_manager->SetFocus(this);
    }
}

} // namespace toolkit
