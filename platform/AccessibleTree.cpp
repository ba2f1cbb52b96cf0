#include "platform/AccessibleTree.h"

namespace platform {

bool isPressable(AccessibleRole role) {
    switch (role) {
    case AccessibleRole::button:
    case AccessibleRole::checkBox:
    case AccessibleRole::radioButton:
    case AccessibleRole::comboBox:
    case AccessibleRole::listItem:
    case AccessibleRole::menuItem:
        return true;
    default:
        return false;
    }
}

Accessible* focusedIn(Accessible& node) {
    if (node.accessibleState().focused) {
        return &node;
    }
    for (int i = 0; i < node.accessibleChildCount(); ++i) {
        Accessible* child = node.accessibleChild(i);
        if (Accessible* found = child != nullptr ? focusedIn(*child) : nullptr) {
            return found;
        }
    }
    return nullptr;
}

} // namespace platform
