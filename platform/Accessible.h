// What a control shows to assistive technology. The toolkit implements it; a back end hands it to
// the system's accessibility interface. UI thread only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Geometry.h"

namespace platform {

enum class AccessibleRole {
    window,
    dialog,
    group,
    label,
    button,
    checkBox,
    radioButton,
    comboBox,
    edit,
    list,
    listItem,
    menu,
    menuItem,
    picture,
    separator, ///< between two areas, which it sizes
    progressBar,
    slider,
    tree,
    treeItem,
};

struct AccessibleState {
    bool enabled = true;
    bool visible = true;
    bool focusable = false;
    bool focused = false;
    bool checkable = false;
    bool checked = false;
    bool selectable = false;
    bool selected = false;
    bool expandable = false;
    bool expanded = false;
    bool readOnly = false;
    bool multiSelectable = false; ///< several nodes below it can be selected
};

/// What assistive technology should look at again (WindowAccessibility::changed).
enum class AccessibleChange {
    focus,     ///< the node got the keyboard focus
    name,      ///< its visible text
    value,     ///< its text or choice
    state,     ///< any of AccessibleState but the focus
    selection, ///< which of the nodes below it are selected
    children,  ///< nodes below it came or went
    news,      ///< its text is worth reading out, once nothing else is being said
    alert,     ///< its text is worth reading out at once
};

/// A node of a window's accessibility tree. Not owned by the back end, which asks again each time
/// and watches accessibleLife() to forget nodes that are gone.
class Accessible {
public:
    Accessible() = default;
    Accessible(const Accessible&) = delete;
    Accessible& operator=(const Accessible&) = delete;
    virtual ~Accessible() = default;

    /// Expires when this object is destroyed.
    [[nodiscard]] std::weak_ptr<const void> accessibleLife() const {
        if (!m_life) {
            m_life = std::make_shared<char>();
        }
        return m_life;
    }

    [[nodiscard]] virtual AccessibleRole accessibleRole() const = 0;
    /// The visible text, or the label that names the control.
    [[nodiscard]] virtual std::u16string accessibleName() const = 0;
    /// The control's own name in the layout.
    [[nodiscard]] virtual std::u16string accessibleId() const = 0;
    /// The text of an edit, the chosen text of a combo; else empty.
    [[nodiscard]] virtual std::u16string accessibleValue() const = 0;
    [[nodiscard]] virtual AccessibleState accessibleState() const = 0;
    /// In window pixels.
    [[nodiscard]] virtual Rect accessibleRect() const = 0;
    [[nodiscard]] virtual Accessible* accessibleParent() const = 0;
    [[nodiscard]] virtual int accessibleChildCount() const = 0;
    [[nodiscard]] virtual Accessible* accessibleChild(int index) const = 0;
    /// -1 when `child` is none.
    [[nodiscard]] virtual int accessibleIndexOf(const Accessible& child) const;
    /// The topmost visible child at a point of the window; null when there is none.
    [[nodiscard]] virtual Accessible* accessibleChildAt(Point point) const;
    /// The node with the keyboard focus at or below this one; null when there is none.
    [[nodiscard]] virtual Accessible* accessibleFocused() = 0;
    /// The children that are selected.
    [[nodiscard]] virtual std::vector<Accessible*> accessibleSelection() const;
    /// Presses, toggles, opens or selects, as a click would.
    virtual void accessiblePress() = 0;
    /// Where several nodes can be selected: selects or deselects this one and leaves the others.
    /// Elsewhere: selects it, or does nothing.
    virtual void accessibleSelect(bool selected) {
        if (selected) {
            accessiblePress();
        }
    }
    virtual void accessibleFocus() = 0;
    /// Caret position in code units for an edit; -1 for everything else.
    [[nodiscard]] virtual int accessibleCaret() const = 0;
    /// Replaces the text of an edit as if typed; nothing happens on everything else.
    virtual void accessibleSetValue(const std::u16string& /*text*/) {}

private:
    mutable std::shared_ptr<const void> m_life; ///< made when first asked for
};

} // namespace platform
