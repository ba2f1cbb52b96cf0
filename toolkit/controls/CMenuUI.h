// A menu: rows with icon, text and key, over the other controls of a window. MenuPopup opens it.
// The row with the focus is the highlighted one. UI thread only.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "platform/Event.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class WindowLook;

/// One row; without a text it is a line between others.
struct MenuEntry {
    std::u16string text{};
    std::u16string key{};  ///< only shown, at the right
    std::u16string icon{}; ///< one of the skin's icons; empty: none
    bool enabled = true;
    /// For a row that switches something: whether that is on. It shows a tick in place of the icon.
    std::optional<bool> checked{};
    std::function<void()> run{};
};

/// The look of a menu: the attributes of `<Default class="Menu">`.
struct MenuStyle {
    ItemStyle item;
    SkinColor keyColor = Tone::hint;
    SkinColor lineColor = Tone::line;
    int width = 280; ///< at least; more where a row needs it

    [[nodiscard]] static MenuStyle of(const WindowLook& look);
};

class CMenuUI final : public CContainerUI {
public:
    using Run = std::function<void(const std::function<void()>&)>;

    /// `run` is called with what a row runs; it may remove the menu.
    CMenuUI(const WindowLook& look, const std::vector<MenuEntry>& entries, Run run);

    [[nodiscard]] std::u16string GetClass() const override { return u"Menu"; }
    [[nodiscard]] Size EstimateSize(Size available) const override;
    /// Up, Down, Home and End move the focus, Enter and Space run its row. False for other keys.
    bool useKey(platform::Key key);
    /// Moves the focus to the next row that begins with the text.
    void typed(const std::u16string& text);
    /// Runs the row at a point of the window; true when there is one.
    bool runAt(Point point);

    [[nodiscard]] const MenuStyle& style() const { return m_style; }
    /// What a row runs.
    void run(const std::function<void()>& action) const { m_run(action); }

    [[nodiscard]] bool isFocusable() const override { return true; }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::menu;
    }

protected:
    void layoutChildren(const Rect& content) override;

private:
    /// The next row from `from` in direction `step` that can have the focus, round at the ends.
    [[nodiscard]] CControlUI* next(int from, int step) const;
    [[nodiscard]] int focusedRow() const;

    MenuStyle m_style;
    Run m_run;
};

class CMenuItemUI final : public CControlUI {
public:
    CMenuItemUI(const CMenuUI& menu, MenuEntry entry);

    [[nodiscard]] std::u16string GetClass() const override { return u"MenuItem"; }
    [[nodiscard]] Size EstimateSize(Size available) const override;
    void run();
    bool DoEvent(const TEventUI& event) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;

    [[nodiscard]] bool isFocusable() const override { return !GetText().empty(); }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    [[nodiscard]] std::u16string accessibleName() const override { return GetText(); }
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    void accessiblePress() override { run(); }

private:
    /// The icon left of the text; empty: none.
    [[nodiscard]] std::u16string sign() const;

    const CMenuUI& m_menu;
    MenuEntry m_entry;
};

} // namespace toolkit
