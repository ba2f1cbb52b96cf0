// A box that shows one item of a drop-down list. It opens on a press, Space, Alt+Down and F4;
// Up, Down, Home, End and typed letters pick without opening.
//
// Items are CListLabelElementUI, added one by one, or a shared list of texts: then the item
// controls are made on request, and many combos can share one long list.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Event.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class CComboUI : public CContainerUI {
public:
    using Texts = std::vector<std::u16string>;

    CComboUI();
    ~CComboUI() override;

    [[nodiscard]] std::u16string GetClass() const override { return u"Combo"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    /// Takes a CListLabelElementUI; drops any other kind and returns null.
    CControlUI* Add(std::unique_ptr<CControlUI> control) override;
    CControlUI* AddAt(std::unique_ptr<CControlUI> control, int index) override;
    /// Replaces all items by one for each text; nothing is selected, nothing is sent.
    void SetItemTexts(std::shared_ptr<const Texts> texts);
    [[nodiscard]] int GetCount() const override;
    [[nodiscard]] CControlUI* GetItemAt(int index) const override;
    [[nodiscard]] int GetItemIndex(const CControlUI* control) const override;
    /// Empty when there is no such index; makes no item control.
    [[nodiscard]] std::u16string GetItemText(int index) const;
    /// The first item with exactly `text`, -1 when none.
    [[nodiscard]] int FindItemText(std::u16string_view text) const;
    [[nodiscard]] bool IsItemEnabled(int index) const;
    /// The selection moves with its item; removing the selected item leaves nothing selected.
    bool RemoveAt(int index) override;
    void RemoveAll() override;

    /// -1 when nothing is selected.
    [[nodiscard]] int GetCurSel() const { return m_current; }
    /// The selected item's text, empty when nothing is selected.
    [[nodiscard]] std::u16string GetText() const override;
    /// Selects and, when the index changed to a valid one, sends "itemselect". -1 selects nothing,
    /// silently. False for any other index outside the list.
    bool SelectItem(int index, bool takeFocus = false);
    /// What a pick by the user does: always sends "itemselect". False for no or a disabled
    /// item, and when the combo itself is disabled.
    bool pick(int index);

    /// Width 0: as wide as the combo. Height: the most the list takes before it scrolls.
    void SetDropBoxSize(Size size) { m_dropBoxSize = size; }
    [[nodiscard]] Size GetDropBoxSize() const { return m_dropBoxSize; }
    [[nodiscard]] bool IsDropped() const;
    /// Opens the list; false without items, when disabled or in no window.
    bool Drop();
    void CloseDrop();

    [[nodiscard]] const ItemStyle& itemStyle() const { return m_itemStyle; }
    [[nodiscard]] SkinColor dropBorderColor() const { return m_dropBorderColor; }
    [[nodiscard]] SkinColor dropBackColor() const { return m_dropBackColor; }

    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    void forgetInput() override;
    bool DoEvent(const TEventUI& event) override;
    [[nodiscard]] Size EstimateSize(Size available) const override;
    [[nodiscard]] bool isFocusable() const override { return true; }
    /// The keys of the closed list; an open one gets all keys.
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    [[nodiscard]] std::u16string toolTipAt(Point point) const override;
    /// The items are in the drop list, not in the window.
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] CControlUI* childAt(int /*index*/) const override { return nullptr; }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    [[nodiscard]] std::u16string accessibleValue() const override { return GetText(); }
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    [[nodiscard]] int accessibleChildCount() const override { return GetCount(); }
    [[nodiscard]] platform::Accessible* accessibleChild(int index) const override;
    [[nodiscard]] int accessibleIndexOf(const platform::Accessible& child) const override;
    /// The items have no place of their own.
    [[nodiscard]] platform::Accessible* accessibleChildAt(Point /*point*/) const override {
        return nullptr;
    }
    [[nodiscard]] std::vector<platform::Accessible*> accessibleSelection() const override;
    void accessiblePress() override;

protected:
    void paintStatus(platform::Canvas& canvas) override;
    void paintText(platform::Canvas& canvas) override;

private:
    struct Attributes;
    [[nodiscard]] Rect textRect() const;
    /// An item: its control once that was requested, else its text in the shared list.
    using Item = std::unique_ptr<CListLabelElementUI>;
    void makeOwnItems();
    void dropOrClose();
    bool onMouse(const TEventUI& event);
    bool onKey(const TEventUI& event);
    bool onDroppedKey(const TEventUI& event);
    void moveHighlight(platform::Key key);
    bool onText(const TEventUI& event);
    [[nodiscard]] int nextEnabled(int from, int step, int otherwise) const;

    std::shared_ptr<const Texts> m_texts;   ///< set: items are made from it
    mutable std::vector<Item> m_comboItems; ///< with m_texts: empty, or some of them made
    ItemStyle m_itemStyle;
    std::u16string m_normalImage;
    std::u16string m_hotImage;
    std::u16string m_pushedImage;
    std::u16string m_disabledImage;
    Size m_dropBoxSize{0, 150};
    std::optional<Rect> m_textPadding;
    std::optional<SkinColor> m_textColor;
    std::optional<SkinColor> m_disabledTextColor;
    std::optional<int> m_font;
    SkinColor m_dropBorderColor = Tone::edge;
    SkinColor m_dropBackColor = Tone::surface;
    int m_current = -1;
    bool m_hot = false;
};

} // namespace toolkit
