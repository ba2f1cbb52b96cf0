#include "platform/win32/MsaaTerms.h"

#include <windows.h>

#include <oleacc.h>

namespace platform::win32 {

long msaaRole(AccessibleRole role) {
    switch (role) {
    case AccessibleRole::window:
        return ROLE_SYSTEM_CLIENT;
    case AccessibleRole::dialog:
        return ROLE_SYSTEM_DIALOG;
    case AccessibleRole::group:
        return ROLE_SYSTEM_GROUPING;
    case AccessibleRole::label:
        return ROLE_SYSTEM_STATICTEXT;
    case AccessibleRole::button:
        return ROLE_SYSTEM_PUSHBUTTON;
    case AccessibleRole::checkBox:
        return ROLE_SYSTEM_CHECKBUTTON;
    case AccessibleRole::radioButton:
        return ROLE_SYSTEM_RADIOBUTTON;
    case AccessibleRole::comboBox:
        return ROLE_SYSTEM_COMBOBOX;
    case AccessibleRole::edit:
        return ROLE_SYSTEM_TEXT;
    case AccessibleRole::list:
        return ROLE_SYSTEM_LIST;
    case AccessibleRole::listItem:
        return ROLE_SYSTEM_LISTITEM;
    case AccessibleRole::menu:
        return ROLE_SYSTEM_MENUPOPUP;
    case AccessibleRole::menuItem:
        return ROLE_SYSTEM_MENUITEM;
    case AccessibleRole::picture:
        return ROLE_SYSTEM_GRAPHIC;
    case AccessibleRole::separator:
        return ROLE_SYSTEM_SEPARATOR;
    case AccessibleRole::progressBar:
        return ROLE_SYSTEM_PROGRESSBAR;
    case AccessibleRole::slider:
        return ROLE_SYSTEM_SLIDER;
    case AccessibleRole::tree:
        return ROLE_SYSTEM_OUTLINE;
    case AccessibleRole::treeItem:
        return ROLE_SYSTEM_OUTLINEITEM;
    }
    return ROLE_SYSTEM_CLIENT;
}

long msaaState(const AccessibleState& state) {
    const struct {
        bool set;
        long bit;
    } bits[] = {
        {!state.enabled, STATE_SYSTEM_UNAVAILABLE},
        {!state.visible, STATE_SYSTEM_INVISIBLE},
        {state.focusable, STATE_SYSTEM_FOCUSABLE},
        {state.focused, STATE_SYSTEM_FOCUSED},
        {state.checkable && state.checked, STATE_SYSTEM_CHECKED},
        {state.selectable, STATE_SYSTEM_SELECTABLE},
        {state.selected, STATE_SYSTEM_SELECTED},
        {state.multiSelectable, STATE_SYSTEM_MULTISELECTABLE | STATE_SYSTEM_EXTSELECTABLE},
        {state.expandable && state.expanded, STATE_SYSTEM_EXPANDED},
        {state.expandable && !state.expanded, STATE_SYSTEM_COLLAPSED},
        {state.readOnly, STATE_SYSTEM_READONLY},
    };
    long result = 0;
    for (const auto& bit : bits) {
        result |= bit.set ? bit.bit : 0;
    }
    return result;
}

std::u16string msaaAction(const Accessible& node) {
    switch (node.accessibleRole()) {
    case AccessibleRole::button:
        return u"Press";
    case AccessibleRole::checkBox:
        return node.accessibleState().checked ? u"Uncheck" : u"Check";
    case AccessibleRole::radioButton:
        return u"Check";
    case AccessibleRole::comboBox:
        return node.accessibleState().expanded ? u"Close" : u"Open";
    case AccessibleRole::listItem:
    case AccessibleRole::treeItem:
        return u"Select";
    case AccessibleRole::menuItem:
        return u"Execute";
    default:
        return {};
    }
}

} // namespace platform::win32
