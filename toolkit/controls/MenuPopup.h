// Opens a menu at a control of a window and closes it: with Esc, the menu key, a press elsewhere,
// when a row runs and when the window is left. One per window.
//
//   MenuPopup::of(manager).open(button, {{.text = u"Settings…", .run = [] { ... }}});
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CMenuUI.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/window/Popup.h"

namespace toolkit {

class CPaintManagerUI;

class MenuPopup final : public Popup {
public:
    explicit MenuPopup(CPaintManagerUI& manager) : m_manager(manager) {}
    /// The menu of a window.
    [[nodiscard]] static MenuPopup& of(CPaintManagerUI& manager);

    /// The focus goes to the menu, to its first row after keyboard use. False for a menu without
    /// rows, or in a window without controls.
    bool open(CControlUI& owner, const std::vector<MenuEntry>& entries) {
        return openAt(owner.GetPos(), owner, entries);
    }
    /// The same at a part of the owner, or a point: an empty `anchor`. Window pixels.
    bool openAt(const platform::Rect& anchor, CControlUI& owner,
                const std::vector<MenuEntry>& entries);
    /// Null while closed. Not owned.
    [[nodiscard]] CMenuUI* menu() const { return m_life.expired() ? nullptr : m_menu; }

    [[nodiscard]] CControlUI* owner() const override { return m_owner; }
    /// The focus returns to where it was, if the menu has it still.
    void close() override;
    bool key(const TEventUI& event) override;
    [[nodiscard]] bool holds(const CControlUI* control) const override;
    void wheel(int /*delta*/) override {}
    void dragOver(platform::Point screen) override;
    void dropAt(platform::Point screen) override;

private:
    [[nodiscard]] platform::Point toWindow(platform::Point screen) const;
    void run(const std::function<void()>& action);

    CPaintManagerUI& m_manager;
    CControlUI* m_owner = nullptr;
    CMenuUI* m_menu = nullptr;
    std::weak_ptr<const void> m_life; ///< of the menu, which the window's controls own
    CControlUI* m_before = nullptr;   ///< had the focus
    std::weak_ptr<const void> m_beforeLife;
};

} // namespace toolkit
