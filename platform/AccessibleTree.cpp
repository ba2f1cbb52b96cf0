#include "platform/AccessibleTree.h"

#include <vector>

#include "platform/Accessible.h"
#include "platform/Geometry.h"

namespace platform {

bool isPressable(AccessibleRole role) {
    switch (role) {
    case AccessibleRole::button:
    case AccessibleRole::checkBox:
    case AccessibleRole::radioButton:
    case AccessibleRole::comboBox:
    case AccessibleRole::listItem:
    case AccessibleRole::menuItem:
    case AccessibleRole::treeItem:
        return true;
    default:
        return false;
    }
}

int Accessible::accessibleIndexOf(const Accessible& child) const {
    for (int i = 0; i < accessibleChildCount(); ++i) {
        if (accessibleChild(i) == &child) {
            return i;
        }
    }
    return -1;
}

Accessible* Accessible::accessibleChildAt(Point point) const {
    for (int i = accessibleChildCount() - 1; i >= 0; --i) { // later children lie on top
        Accessible* child = accessibleChild(i);
        if (child != nullptr && child->accessibleState().visible &&
            child->accessibleRect().contains(point)) {
            return child;
        }
    }
    return nullptr;
}

std::vector<Accessible*> Accessible::accessibleSelection() const {
    std::vector<Accessible*> selected;
    for (int i = 0; i < accessibleChildCount(); ++i) {
        Accessible* child = accessibleChild(i);
        if (child != nullptr && child->accessibleState().selected) {
            selected.push_back(child);
        }
    }
    return selected;
}

} // namespace platform
