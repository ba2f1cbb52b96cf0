#include "platform/qt/QtAccessible.h"

#include <QMetaObject>

#include "platform/AccessibleTree.h"
#include "platform/Geometry.h"
#include "platform/Guard.h"
#include "platform/Window.h"
#include "platform/qt/QtConvert.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"

namespace platform::qt {

namespace {

QAccessible::Role roleOf(AccessibleRole role) {
    switch (role) {
    case AccessibleRole::window:
        return QAccessible::Window;
    case AccessibleRole::dialog:
        return QAccessible::Dialog;
    case AccessibleRole::group:
        return QAccessible::Grouping;
    case AccessibleRole::label:
        return QAccessible::StaticText;
    case AccessibleRole::button:
        return QAccessible::Button;
    case AccessibleRole::checkBox:
        return QAccessible::CheckBox;
    case AccessibleRole::radioButton:
        return QAccessible::RadioButton;
    case AccessibleRole::comboBox:
        return QAccessible::ComboBox;
    case AccessibleRole::edit:
        return QAccessible::EditableText;
    case AccessibleRole::list:
        return QAccessible::List;
    case AccessibleRole::listItem:
        return QAccessible::ListItem;
    case AccessibleRole::menu:
        return QAccessible::PopupMenu;
    case AccessibleRole::menuItem:
        return QAccessible::MenuItem;
    case AccessibleRole::picture:
        return QAccessible::Graphic;
    case AccessibleRole::separator:
        return QAccessible::Splitter;
    case AccessibleRole::progressBar:
        return QAccessible::ProgressBar;
    case AccessibleRole::slider:
        return QAccessible::Slider;
    case AccessibleRole::tree:
        return QAccessible::Tree;
    case AccessibleRole::treeItem:
        return QAccessible::TreeItem;
    }
    return QAccessible::Client;
}

bool hasText(AccessibleRole role) {
    return role == AccessibleRole::edit || role == AccessibleRole::comboBox;
}

} // namespace

QtAccessibleNode::QtAccessibleNode(QtSurface& surface, Accessible* node)
    : m_surface(&surface), m_node(node) {
    if (node != nullptr) {
        m_life = node->accessibleLife();
        lastState = state();
        lastText = value();
    }
}

Accessible* QtAccessibleNode::node() const {
    if (m_surface == nullptr || m_surface->window() == nullptr) {
        return nullptr;
    }
    if (m_node != nullptr) {
        return m_life.expired() ? nullptr : m_node;
    }
    return guarded("accessible root", static_cast<Accessible*>(nullptr),
                   [this] { return m_surface->window()->events().accessibleRoot(); });
}

QObject* QtAccessibleNode::object() const {
    return m_node == nullptr ? m_surface.data() : nullptr;
}

QWindow* QtAccessibleNode::window() const {
    return m_surface;
}

QAccessibleInterface* QtAccessibleNode::parent() const {
    if (m_node == nullptr) {
        return QAccessible::queryAccessibleInterface(qApp);
    }
    const Accessible* self = node();
    Accessible* above = self != nullptr ? self->accessibleParent() : nullptr;
    if (self == nullptr) {
        return nullptr;
    }
    if (above == nullptr || above->accessibleParent() == nullptr) {
        return QtAccessibleNodes::root(*m_surface);
    }
    return QtAccessibleNodes::of(*m_surface, *above);
}

QAccessibleInterface* QtAccessibleNode::child(int index) const {
    const Accessible* self = node();
    if (self == nullptr || index < 0 || index >= self->accessibleChildCount()) {
        return nullptr;
    }
    Accessible* below = self->accessibleChild(index);
    return below != nullptr ? QtAccessibleNodes::of(*m_surface, *below) : nullptr;
}

int QtAccessibleNode::childCount() const {
    const Accessible* self = node();
    return self != nullptr ? self->accessibleChildCount() : 0;
}

int QtAccessibleNode::indexOfChild(const QAccessibleInterface* child) const {
    const Accessible* self = node();
    const auto* ours = dynamic_cast<const QtAccessibleNode*>(child);
    const Accessible* below = ours != nullptr ? ours->node() : nullptr;
    return self != nullptr && below != nullptr ? self->accessibleIndexOf(*below) : -1;
}

QAccessibleInterface* QtAccessibleNode::childAt(int x, int y) const {
    const Accessible* self = node();
    const QPoint at = m_surface != nullptr && m_surface->window() != nullptr
                          ? m_surface->mapFromGlobal(QPoint(x, y)) / m_surface->window()->unit()
                          : QPoint();
    Accessible* below = self != nullptr ? self->accessibleChildAt(Point{at.x(), at.y()}) : nullptr;
    return below != nullptr ? QtAccessibleNodes::of(*m_surface, *below) : nullptr;
}

QAccessibleInterface* QtAccessibleNode::focusChild() const {
    Accessible* self = node();
    Accessible* focused = self != nullptr ? self->accessibleFocused() : nullptr;
    return focused != nullptr ? QtAccessibleNodes::of(*m_surface, *focused) : nullptr;
}

QString QtAccessibleNode::value() const {
    const Accessible* self = node();
    return self != nullptr ? toQt(self->accessibleValue()) : QString();
}

QString QtAccessibleNode::text(QAccessible::Text what) const {
    const Accessible* self = node();
    if (self == nullptr) {
        return {};
    }
    switch (what) {
    case QAccessible::Name:
        return toQt(self->accessibleName());
    case QAccessible::Description:
        return toQt(self->accessibleId());
    case QAccessible::Value:
        return value();
    default:
        return {};
    }
}

void QtAccessibleNode::setText(QAccessible::Text what, const QString& text) {
    if (what == QAccessible::Value) {
        replaceValue(text);
    }
}

void QtAccessibleNode::replaceValue(const QString& text) {
    Accessible* self = node();
    if (self != nullptr && m_surface->window()->takesInput()) {
        guardedRun("accessible text", [&] { self->accessibleSetValue(fromQt(text)); });
    }
}

QRect QtAccessibleNode::rect() const {
    const Accessible* self = node();
    if (self == nullptr) {
        return {};
    }
    const double unit = m_surface->window()->unit();
    const QRect place = toQt(self->accessibleRect());
    return QRect(place.topLeft() * unit, place.size() * unit)
        .translated(m_surface->mapToGlobal(QPoint()));
}

QAccessible::Role QtAccessibleNode::role() const {
    const Accessible* self = node();
    return self != nullptr ? roleOf(self->accessibleRole()) : QAccessible::NoRole;
}

QAccessible::State QtAccessibleNode::state() const {
    QAccessible::State result;
    const Accessible* self = node();
    if (self == nullptr) {
        result.invalid = true;
        return result;
    }
    const AccessibleState ours = self->accessibleState();
    const bool edit = self->accessibleRole() == AccessibleRole::edit;
    result.disabled = !ours.enabled;
    result.invisible = !ours.visible;
    result.focusable = ours.focusable;
    result.focused = ours.focused;
    result.checkable = ours.checkable;
    result.checked = ours.checked;
    result.selectable = ours.selectable;
    result.selected = ours.selected;
    result.multiSelectable = ours.multiSelectable;
    result.extSelectable = ours.multiSelectable;
    result.expandable = ours.expandable;
    result.expanded = ours.expandable && ours.expanded;
    result.collapsed = ours.expandable && !ours.expanded;
    result.readOnly = edit && ours.readOnly;
    result.editable = edit && !ours.readOnly;
    result.active = m_node == nullptr && m_surface->isActive();
    return result;
}

void* QtAccessibleNode::interface_cast(QAccessible::InterfaceType type) {
    const Accessible* self = node();
    if (self == nullptr) {
        return nullptr;
    }
    const AccessibleRole own = self->accessibleRole();
    switch (type) {
    case QAccessible::ActionInterface:
        return isPressable(own) || self->accessibleState().focusable
                   ? static_cast<QAccessibleActionInterface*>(this)
                   : nullptr;
    case QAccessible::TextInterface:
        return hasText(own) ? static_cast<QAccessibleTextInterface*>(this) : nullptr;
    case QAccessible::EditableTextInterface:
        return own == AccessibleRole::edit && !self->accessibleState().readOnly
                   ? static_cast<QAccessibleEditableTextInterface*>(this)
                   : nullptr;
    default:
        return nullptr;
    }
}

QStringList QtAccessibleNode::actionNames() const {
    const Accessible* self = node();
    QStringList names;
    if (self != nullptr && self->accessibleState().enabled) {
        if (isPressable(self->accessibleRole())) {
            names << pressAction();
        }
        if (self->accessibleState().focusable) {
            names << setFocusAction();
        }
        const Accessible* above = self->accessibleParent();
        if (self->accessibleState().selectable && above != nullptr &&
            above->accessibleState().multiSelectable) {
            names << toggleAction();
        }
    }
    return names;
}

/// Done after the call has returned: the caller waits for it, and a press may open a dialog and
/// return only when that is closed.
void QtAccessibleNode::doAction(const QString& actionName) {
    if (m_node == nullptr || !actionNames().contains(actionName)) {
        return;
    }
    const auto act = [surface = m_surface, node = m_node, life = m_life, actionName] {
        const QtWindow* window = surface != nullptr ? surface->window() : nullptr;
        if (window == nullptr || !window->takesInput() || life.expired()) {
            return;
        }
        guardedRun("accessible action", [&] {
            if (actionName == pressAction()) {
                node->accessiblePress();
            } else if (actionName == toggleAction()) {
                node->accessibleSelect(!node->accessibleState().selected);
            } else {
                node->accessibleFocus();
            }
        });
    };
    QMetaObject::invokeMethod(m_surface.data(), act, Qt::QueuedConnection);
}

QStringList QtAccessibleNode::keyBindingsForAction(const QString& /*actionName*/) const {
    return {};
}

} // namespace platform::qt
