// Which control of a window has the keyboard, and how Tab moves it.
#pragma once

#include "platform/Event.h"
#include "platform/Geometry.h"

namespace toolkit {

class CControlUI;
class CPaintManagerUI;

class FocusKeeper {
public:
    explicit FocusKeeper(CPaintManagerUI& manager) : m_manager(manager) {}

    [[nodiscard]] CControlUI* focused() const { return m_focused; }
    /// Null, or a control that cannot take it, leaves nobody with the keyboard. The one that loses
    /// it has heard of that, and its window too, before the new one gets it.
    /// `reveals`: scrolls it into view; not for a press, which must not move what it is on.
    void set(CControlUI* control, bool reveals = true);
    /// The next control in layout order that the Tab key reaches; round at the ends.
    bool move(bool backward);
    /// For a press on `hit` (null: on none): the nearest control around it that uses keys takes the
    /// keyboard; without one, an edit still loses it.
    void press(CControlUI* hit);
    /// A focused text field hands over what was typed as if it were left, and goes on typing unless
    /// its window's handler gave the keyboard to another or removed it.
    void takeText();
    /// Nobody has the keyboard any more, and nobody is told but the window's input method.
    void drop();
    /// Drops a control that leaves the window, silently.
    void forget(const CControlUI& control);
    /// The keyboard goes to another window and comes back.
    void windowDeactivated();
    void windowActivated();
    /// The native window is gone.
    void clear();

    /// The ring is shown after keyboard use and always in edits.
    void setKeyboardUse(bool used);
    [[nodiscard]] bool showsRing() const;
    /// Where the ring of the focused control is painted; empty when none.
    [[nodiscard]] platform::Rect ringRect() const;

private:
    void invalidateRing() const;
    void endTextInput() const;

    CPaintManagerUI& m_manager;
    CControlUI* m_focused = nullptr;
    CControlUI* m_next = nullptr;    ///< gets the keyboard once the old one has heard
    CControlUI* m_origin = nullptr;  ///< where Tab goes on from when nobody has the keyboard
    CControlUI* m_restore = nullptr; ///< had it when the window was left
    bool m_keyboardUse = false;
};

} // namespace toolkit
