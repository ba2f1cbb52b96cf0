#include <bit>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>

#include "platform/Window.h"
#include "platform/qt/QtAccessible.h"
#include "platform/qt/QtSurface.h"
#include "platform/qt/QtWindow.h"

namespace platform::qt {

namespace {

struct Entry {
    std::weak_ptr<const void> life;
    QAccessible::Id id;
};

/// Qt keeps its interfaces process-wide; so is what leads from a node to its interface. UI thread.
std::map<const Accessible*, Entry>& entries() {
    static std::map<const Accessible*, Entry> all;
    return all;
}

QAccessibleInterface* makeRoot(const QString& /*className*/, QObject* object) {
    auto* surface = dynamic_cast<QtSurface*>(object);
    if (surface == nullptr) {
        return nullptr;
    }
    return std::make_unique<QtAccessibleNode>(*surface, nullptr).release(); // Qt's from here on
}

void tellState(QtAccessibleNode& node) {
    const QAccessible::State now = node.state();
    // A record of one-bit fields: what differs is marked in a record of the same shape.
    const auto differing =
        std::bit_cast<std::uint64_t>(node.lastState) ^ std::bit_cast<std::uint64_t>(now);
    node.lastState = now;
    if (differing != 0) {
        QAccessibleStateChangeEvent event(&node, std::bit_cast<QAccessible::State>(differing));
        QAccessible::updateAccessibility(&event);
    }
}

void tellText(QtAccessibleNode& node) {
    const QString former = std::exchange(node.lastText, node.text(QAccessible::Value));
    if (former == node.lastText) {
        return;
    }
    QAccessibleTextUpdateEvent event(&node, 0, former, node.lastText);
    event.setCursorPosition(node.cursorPosition());
    QAccessible::updateAccessibility(&event);
}

} // namespace

void QtAccessibleNodes::install() {
    QAccessible::installFactory(makeRoot);
    // The first question starts Qt's bridge to the accessibility bus; widgets would ask it.
    static_cast<void>(QAccessible::isActive());
}

QAccessibleInterface* QtAccessibleNodes::root(const QtSurface& surface) {
    return QAccessible::queryAccessibleInterface(const_cast<QtSurface*>(&surface));
}

QtAccessibleNode* QtAccessibleNodes::of(QtSurface& surface, Accessible& node) {
    if (surface.window() != nullptr && surface.window()->events().accessibleRoot() == &node) {
        return static_cast<QtAccessibleNode*>(root(surface));
    }
    if (const auto known = entries().find(&node); known != entries().end()) {
        auto* kept =
            static_cast<QtAccessibleNode*>(QAccessible::accessibleInterface(known->second.id));
        if (!known->second.life.expired() && kept->window() == &surface) {
            return kept;
        }
        QAccessible::deleteAccessibleInterface(known->second.id); // of a former node at this place
    }
    auto* made = std::make_unique<QtAccessibleNode>(surface, &node).release();
    entries()[&node] = {node.accessibleLife(), QAccessible::registerAccessibleInterface(made)};
    return made;
}

void QtAccessibleNodes::changed(QtSurface& surface, Accessible& node, AccessibleChange change) {
    if (change == AccessibleChange::children) {
        forgetDead();
    }
    if (!QAccessible::isActive()) {
        return;
    }
    QtAccessibleNode* told = of(surface, node);
    const auto tell = [&](QAccessible::Event kind) {
        QAccessibleEvent event(told, kind);
        QAccessible::updateAccessibility(&event);
    };
    switch (change) {
    case AccessibleChange::focus:
        tell(QAccessible::Focus);
        break;
    case AccessibleChange::name:
        tell(QAccessible::NameChanged);
        break;
    case AccessibleChange::value:
        tellText(*told);
        break;
    case AccessibleChange::state:
        tellState(*told);
        break;
    case AccessibleChange::selection:
        tell(QAccessible::SelectionWithin);
        break;
    case AccessibleChange::children:
        tell(QAccessible::ObjectReorder);
        break;
    case AccessibleChange::news:
        break; // this Qt has no announcements; the new name has been told of
    case AccessibleChange::alert:
        tell(QAccessible::Alert);
        break;
    }
}

std::size_t QtAccessibleNodes::count() {
    return entries().size();
}

void QtAccessibleNodes::forgetAll() {
    for (const auto& [node, entry] : entries()) {
        QAccessible::deleteAccessibleInterface(entry.id);
    }
    entries().clear();
}

void QtAccessibleNodes::forgetDead() {
    std::erase_if(entries(), [](const auto& entry) {
        if (!entry.second.life.expired()) {
            return false;
        }
        QAccessible::deleteAccessibleInterface(entry.second.id);
        return true;
    });
}

} // namespace platform::qt
