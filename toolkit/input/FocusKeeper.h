// Which control of a window has the focus, and how Tab moves it.
#pragma once

#include "platform/Geometry.h"

namespace toolkit {

class CControlUI;
class CPaintManagerUI;

class FocusKeeper {
public:
    explicit FocusKeeper(CPaintManagerUI& manager) : m_manager(manager) {}

    [[nodiscard]] CControlUI* focused() const { return m_focused; }
    /// Null, or a control that cannot take it, leaves the window without a focus. The control that
    /// loses it, and then its window, are notified before the new one gets it.
    /// `reveals`: scrolls it into view; not for a press, which must not move what it is on.
    void set(CControlUI* control, bool reveals = true);
    /// The next control in layout order that the Tab key reaches; round at the ends.
    bool move(bool backward);
    /// The first control inside `pane` that the Tab key reaches gets the focus. False: none is.
    bool enter(CControlUI& pane);
    /// For a press on `hit` (null: on none): it, or its nearest ancestor that uses keys, takes the
    /// focus; without one, an edit still loses it.
    void press(CControlUI* hit);
    /// A focused text field commits what was typed as if it were left, and gets the focus back
    /// unless the window's handler moved the focus or removed the field.
    void takeText();
    /// Drops the focus and notifies only the window's input method.
    void drop();
    /// Drops a control that leaves the window, silently.
    void forget(const CControlUI& control);
    /// Another window becomes active, and this one again.
    void windowDeactivated();
    void windowActivated();
    /// The native window is gone.
    void clear();

    /// Whether it needs `control` or something inside it, now or when the window is active again.
    [[nodiscard]] bool remembers(const CControlUI& control) const;

    /// The ring is shown after keyboard use and always in edits.
    void setKeyboardUse(bool used);
    [[nodiscard]] bool isKeyboardUse() const { return m_keyboardUse; }
    [[nodiscard]] bool showsRing() const;
    /// Where the ring of the focused control is painted; empty when none.
    [[nodiscard]] platform::Rect ringRect() const;

private:
    void invalidateRing() const;
    void endTextInput() const;

    CPaintManagerUI& m_manager;
    CControlUI* m_focused = nullptr;
    CControlUI* m_next = nullptr;    ///< gets the focus once the old one was notified
    CControlUI* m_origin = nullptr;  ///< where Tab continues when nothing has the focus
    CControlUI* m_restore = nullptr; ///< had the focus when the window was left
    bool m_keyboardUse = false;
};

} // namespace toolkit
