// A window's accessibility tree as Qt wants it: one interface object for each node, created on
// request. The object notices by the node's life token when the node is gone.
#pragma once

#include <QAccessible>
#include <QPointer>
#include <cstddef>
#include <memory>

#include "platform/Accessible.h"
#include "platform/qt/QtSurface.h"

namespace platform::qt {

class QtSurface;

/// The interface of a node, or of whatever root the window has at the moment.
class QtAccessibleNode final : public QAccessibleInterface,
                               public QAccessibleActionInterface,
                               public QAccessibleTextInterface,
                               public QAccessibleEditableTextInterface {
public:
    /// `node` null: the root of the window.
    QtAccessibleNode(QtSurface& surface, Accessible* node);

    [[nodiscard]] bool isValid() const override { return node() != nullptr; }
    [[nodiscard]] QObject* object() const override;
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QString text(QAccessible::Text what) const override;
    void setText(QAccessible::Text what, const QString& text) override;
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString& actionName) const override;

    void selection(int index, int* start, int* end) const override;
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int position) override;
    [[nodiscard]] QString text(int start, int end) const override;
    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    [[nodiscard]] QString attributes(int offset, int* start, int* end) const override;

    void deleteText(int start, int end) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int start, int end, const QString& text) override;

    /// The node while it lives; null afterwards.
    [[nodiscard]] Accessible* node() const;
    /// The states and the text as last reported to listeners, to find out what changed.
    QAccessible::State lastState;
    QString lastText;

private:
    [[nodiscard]] QString value() const;
    /// Nothing happens while the window waits for its dialog.
    void replaceValue(const QString& text);

    QPointer<QtSurface> m_surface;
    Accessible* m_node; ///< not owned; valid while m_life is
    std::weak_ptr<const void> m_life;
};

/// The interfaces of all windows' nodes. Qt owns them and finds them by number.
class QtAccessibleNodes {
public:
    /// Has Qt ask us for its windows' trees.
    static void install();
    /// The interface of the root of `surface`.
    [[nodiscard]] static QAccessibleInterface* root(const QtSurface& surface);
    /// The interface of a node; the same one as long as the node lives.
    [[nodiscard]] static QtAccessibleNode* of(QtSurface& surface, Accessible& node);
    /// Tells listeners, if there are any.
    static void changed(QtSurface& surface, Accessible& node, AccessibleChange change);
    /// How many interfaces are kept at the moment.
    [[nodiscard]] static std::size_t count();
    /// Ends the interfaces of nodes that are gone.
    static void forgetDead();
    /// Ends all of them; before the application does.
    static void forgetAll();
};

} // namespace platform::qt
