// A list of rows, with a scroll bar when they do not fit and, if the layout has one, a header. Rows
// are CListLabelElementUI or CListContainerElementUI.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessible.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListHeader.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/controls/ItemStyle.h"

namespace toolkit {

class CListUI : public CContainerUI {
public:
    CListUI();
    ~CListUI() override;

    [[nodiscard]] std::u16string GetClass() const override { return u"List"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    /// Takes rows, and one CListHeader (which is no row and not counted).
    CControlUI* Add(std::unique_ptr<CControlUI> control) override;
    CControlUI* AddAt(std::unique_ptr<CControlUI> control, int index) override;
    /// The selection moves with its row; removing the selected row leaves nothing selected.
    bool RemoveAt(int index) override;
    void RemoveAll() override;

    /// The selected row, -1 when none.
    [[nodiscard]] int GetCurSel() const { return m_current; }
    /// Selects row `index`, scrolls it into view and, when the index changed to a valid one, sends
    /// "itemselect". -1 selects nothing, silently. False for any other index outside the list.
    bool SelectItem(int index, bool takeFocus = false);
    /// What a press or an arrow key does: always sends "itemselect". `reveals` as
    /// for the focus: a key scrolls, a press does not move what it is on.
    bool pick(int index, bool reveals);
    /// What a double click or Enter does: sends "itemactivate" for the selected row.
    void activate();

    [[nodiscard]] const ItemStyle& itemStyle() const { return m_itemStyle; }
    [[nodiscard]] CListHeader* GetHeader() const { return m_header.get(); }
    [[nodiscard]] CScrollBarUI& GetScrollBar() { return *m_scrollBar; }

    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    bool DoEvent(const TEventUI& event) override;
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    [[nodiscard]] bool isFocusable() const override { return true; }
    void reveal(CControlUI& descendant) override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] CControlUI* childAt(int index) const override;
    [[nodiscard]] CControlUI* controlAt(Point point) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;

    /// The rows' part of the list.
    [[nodiscard]] Rect childClip() const override { return m_rowsRect; }

protected:
    void layoutChildren(const Rect& content) override;

private:
    [[nodiscard]] int rowHeight(const CControlUI& row, Size available) const;
    void setCurrent(int index, bool reveals);
    void markSelected(int index, bool selected);
    /// `tops`: where each row begins in the content, and where the last one ends.
    void placeRows(const std::vector<int>& tops);
    bool onKey(const TEventUI& event);
    [[nodiscard]] int rowAtOffset(int pixels) const;
    [[nodiscard]] int enabledRow(int index, int step) const;

    std::unique_ptr<CListHeader> m_header;
    std::unique_ptr<CScrollBarUI> m_scrollBar;
    ItemStyle m_itemStyle;
    Rect m_rowsRect;
    Rect m_rowInset; ///< of container rows that come without an inset of their own
    int m_current = -1;
    int m_reveal = -1; ///< scrolled into view by the next layout
};

} // namespace toolkit
