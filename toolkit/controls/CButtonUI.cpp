#include "toolkit/controls/CButtonUI.h"

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "toolkit/window/Popup.h"

namespace toolkit {

struct CButtonUI::Attributes {
    static const AttributeTable<CButtonUI>& table();
};

const AttributeTable<CButtonUI>& CButtonUI::Attributes::table() {
    using Text = std::u16string_view;
    static const AttributeTable<CButtonUI> attributes{
        {u"normalimage", [](CButtonUI& c, Text v) { c.m_normalImage = v; }},
        {u"hotimage", [](CButtonUI& c, Text v) { c.m_hotImage = v; }},
        {u"pushedimage", [](CButtonUI& c, Text v) { c.m_pushedImage = v; }},
        {u"disabledimage", [](CButtonUI& c, Text v) { c.m_disabledImage = v; }},
        {u"hottextcolor",
         [](CButtonUI& c, Text v) { assignIf(c.m_hotTextColor, parseSkinColor(v)); }},
        {u"pushedtextcolor",
         [](CButtonUI& c, Text v) { assignIf(c.m_pushedTextColor, parseSkinColor(v)); }},
    };
    return attributes;
}

CButtonUI::CButtonUI() {
    CLabelUI::SetAttribute(u"align", u"center");
}

void* CButtonUI::GetInterface(std::u16string_view name) {
    return name == u"Button" ? this : CLabelUI::GetInterface(name);
}

bool CButtonUI::Activate() {
    const CPaintManagerUI::Busy busy(GetManager());
    if (!takesPress()) {
        return false;
    }
    notify(kClick);
    return true;
}

bool CButtonUI::takesPress() const {
    return GetManager() != nullptr && IsEnabled() && IsVisible();
}

void CButtonUI::forgetInput() {
    if (m_mouseDown || m_keyPushed || m_hot) {
        m_mouseDown = m_mousePushed = m_keyPushed = m_hot = false;
        Invalidate();
    }
}

bool CButtonUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (!Attributes::table().apply(*this, name, value)) {
        return CLabelUI::SetAttribute(name, value);
    }
    NeedUpdate();
    return true;
}

platform::Size CButtonUI::EstimateSize(Size available) const {
    return withImageHeight(CLabelUI::EstimateSize(available), m_normalImage);
}

bool CButtonUI::onMouse(const TEventUI& event) {
    switch (event.Type) {
    case EventType::mouseEnter:
        m_hot = true;
        break;
    case EventType::mouseLeave:
        m_hot = false;
        break;
    case EventType::buttonDown:
    case EventType::doubleClick:
        m_mouseDown = m_mousePushed = true;
        break;
    case EventType::mouseMove:
        if (m_mousePushed == (m_mouseDown && GetPos().contains(event.native.position))) {
            return true;
        }
        m_mousePushed = !m_mousePushed;
        break;
    case EventType::captureLost:
        m_mouseDown = m_mousePushed = false;
        break;
    case EventType::buttonUp: {
        const bool inside = m_mouseDown && GetPos().contains(event.native.position);
        m_mouseDown = m_mousePushed = false;
        Invalidate();
        if (inside) {
            Activate();
        }
        return true;
    }
    default:
        return false;
    }
    Invalidate();
    return true;
}

bool CButtonUI::onKey(const TEventUI& event) {
    if (event.Type == EventType::killFocus) {
        m_keyPushed = false;
        Invalidate();
        return true;
    }
    const bool isDown = event.Type == EventType::keyDown;
    if (isDown && (event.native.modifiers.alt || event.native.modifiers.control)) {
        return false; // a release counts with them too, or the button would stay pressed
    }
    const platform::Key key = event.native.key;
    if (isDown && key == platform::Key::enter) {
        if (!event.native.repeat) {
            Activate();
        }
        return true;
    }
    if (key != platform::Key::space) {
        return false;
    }
    const bool released = !isDown && m_keyPushed;
    m_keyPushed = isDown;
    Invalidate();
    if (released) {
        Activate();
    }
    return true;
}

bool CButtonUI::claimsKey(const platform::Event& event) const {
    return event.key == platform::Key::space || event.key == platform::Key::enter;
}

bool CButtonUI::DoEvent(const TEventUI& event) {
    switch (event.Type) {
    case EventType::keyDown:
    case EventType::keyUp:
    case EventType::killFocus:
        return onKey(event);
    default:
        return onMouse(event) || CLabelUI::DoEvent(event);
    }
}

bool CButtonUI::hasMenu() const {
    const Popup* popup = GetManager() != nullptr ? GetManager()->popup() : nullptr;
    return popup != nullptr && popup->owner() == this;
}

void CButtonUI::paintStatus(platform::Canvas& canvas) {
    if (!IsEnabled() && drawImage(canvas, m_disabledImage)) {
        return;
    }
    if (IsEnabled() && ((isPushed() && drawImage(canvas, m_pushedImage)) ||
                        ((isPushed() || m_hot) && drawImage(canvas, m_hotImage)))) {
        return;
    }
    drawImage(canvas, m_normalImage);
}

SkinColor CButtonUI::currentTextColor() const {
    if (IsEnabled() && isPushed() && m_pushedTextColor.isSet()) {
        return m_pushedTextColor;
    }
    if (IsEnabled() && (isPushed() || m_hot) && m_hotTextColor.isSet()) {
        return m_hotTextColor;
    }
    return CLabelUI::currentTextColor();
}

IconState CButtonUI::iconState() const {
    return !IsEnabled() ? IconState::disabled
           : isPushed() ? IconState::pushed
           : m_hot      ? IconState::hot
                        : IconState::normal;
}

/// Left of the text, if there is one.
platform::Point CButtonUI::iconPlace() const {
    constexpr int kBeforeText = 14;
    return {GetText().empty() ? -1 : kBeforeText, -1};
}

platform::AccessibleState CButtonUI::accessibleState() const {
    platform::AccessibleState state = CLabelUI::accessibleState();
    state.expandable = state.expanded = hasMenu();
    return state;
}

platform::AccessibleRole CButtonUI::accessibleRole() const {
    return platform::AccessibleRole::button;
}

void CButtonUI::accessiblePress() {
    const CPaintManagerUI::Busy busy(GetManager());
    if (takesPress()) {
        GetManager()->focusKeeper().takeText();
    }
    Activate();
}

} // namespace toolkit
