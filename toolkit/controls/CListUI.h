// A list of rows, with a scroll bar when they do not fit and, if the layout has one, a header. Rows
// are CListLabelElementUI or CListContainerElementUI.
//
// Rows are added one by one, or announced: then each is made when it is first seen or asked for,
// and those far from the view are dropped again. Only rows in and near the view are laid out,
// painted and looked through for a name.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Event.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListHeader.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/controls/ListRows.h"

namespace toolkit {

/// Makes announced rows.
struct RowMaker {
    /// Row number `row`, as Add takes it; called again for a row that was dropped. May not change
    /// the list.
    std::function<std::unique_ptr<CControlUI>(int row)> make;
    int height = 25;         ///< of each row
    bool takesFocus = false; ///< the rows have controls that the Tab key goes to
};

class CListUI : public CContainerUI {
public:
    CListUI();
    ~CListUI() override;

    [[nodiscard]] std::u16string GetClass() const override { return u"List"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    /// Takes rows, and one CListHeader (which is no row and not counted).
    CControlUI* Add(std::unique_ptr<CControlUI> control) override;
    CControlUI* AddAt(std::unique_ptr<CControlUI> control, int index) override;
    /// Replaces all rows by `count` announced ones.
    void SetRows(int count, RowMaker maker);
    /// Announces one more row for the maker of SetRows, in front of `index`.
    void AnnounceAt(int index);
    [[nodiscard]] int GetCount() const override { return m_rows.count(); }
    /// Makes the row if it is only announced; its rectangle is that of the last layout even when
    /// the row is not in view. An announced row lives on while it is in or near the view or has the
    /// focus, and as long as the running event.
    [[nodiscard]] CControlUI* GetItemAt(int index) const override;
    [[nodiscard]] int GetItemIndex(const CControlUI* control) const override;
    /// Null for a row that is only announced.
    [[nodiscard]] CControlUI* madeRow(int index) const { return m_rows.made(index); }
    /// The selection moves with its row; removing the selected row leaves nothing selected.
    bool RemoveAt(int index) override;
    void RemoveAll() override;

    /// The selected row, -1 when none. With several: the one that was picked last.
    [[nodiscard]] int GetCurSel() const;
    /// Selects row `index`, scrolls it into view and, when the index changed to a valid one, sends
    /// "itemselect". -1 selects nothing, silently. False for any other index outside the list.
    bool SelectItem(int index, bool takeFocus = false);
    /// What a press or an arrow key does: always sends "itemselect". `reveals` as
    /// for the focus: a key scrolls, a press does not move what it is on.
    bool pick(int index, bool reveals);
    /// What a double click or Enter does: sends "itemactivate" for the selected row.
    void activate();

    // Several rows: attribute "multiselect".
    [[nodiscard]] bool isSelected(int index) const { return m_rows.isSelected(index); }
    /// In ascending order.
    [[nodiscard]] std::vector<int> selectedRows() const;
    /// Selects these rows and no others, and scrolls the last one into view; numbers outside the
    /// list are left out, and without "multiselect" all but the last. As SelectItem, sends
    /// "itemselect" for the last one when that was not the selected row before.
    void SelectItems(const std::vector<int>& rows);
    /// A pick with Shift or Ctrl held: Shift selects from the row picked last without it to this
    /// one, Ctrl selects or deselects the row and leaves the others. Sends one "itemselect".
    /// False, and nothing happens, without these keys or "multiselect".
    bool pickMore(int index, const platform::Modifiers& modifiers, bool reveals);
    /// For the row control `row`: a press on it or on something in it. True when the press ends
    /// there. With attribute "pressactivates" the first button, and assistive technology, activate
    /// the row that they press, as if it were a button.
    bool pressRow(const CControlUI& row, const TEventUI& event);
    /// What assistive technology does to the row alone, where several can be selected.
    void setRowSelected(const CControlUI& row, bool selected);

    [[nodiscard]] const ItemStyle& itemStyle() const { return m_itemStyle; }
    [[nodiscard]] CListHeader* GetHeader() const { return m_header.get(); }
    [[nodiscard]] CScrollBarUI& GetScrollBar() { return *m_scrollBar; }

    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    bool DoEvent(const TEventUI& event) override;
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    [[nodiscard]] bool isFocusable() const override { return true; }
    void reveal(CControlUI& descendant) override;
    /// As `reveal` of that row's control, which need not be made. -1: nothing happens.
    void revealRow(int index);
    /// Without rows that are only announced.
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] CControlUI* childAt(int index) const override;
    [[nodiscard]] CControlUI* childBeside(const CControlUI* child, bool backward) const override;
    void childNeedsUpdate() override;
    void settle(const CControlUI& child) override;
    [[nodiscard]] CControlUI* controlAt(Point point, Meeting kind) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    [[nodiscard]] int accessibleChildCount() const override;
    [[nodiscard]] platform::Accessible* accessibleChild(int index) const override;
    [[nodiscard]] int accessibleIndexOf(const platform::Accessible& child) const override;
    [[nodiscard]] platform::Accessible* accessibleChildAt(Point point) const override;
    [[nodiscard]] std::vector<platform::Accessible*> accessibleSelection() const override;

    /// The rows' part of the list.
    [[nodiscard]] Rect childClip() const override { return m_rowsRect; }

protected:
    void layoutChildren(const Rect& content) override;

private:
    struct Range {
        int first; ///< included
        int last;  ///< excluded
    };
    [[nodiscard]] int rowHeight(const CControlUI& row, Size available) const;
    void rowsMoved(int from, int by);
    void giveInset(CControlUI& row) const;
    CControlUI* makeRow(int index);
    /// Once in each layout.
    void placeRow(int index);
    void placeRows();
    [[nodiscard]] Range rowsIn(const Rect& area) const;
    [[nodiscard]] bool isNeeded(const CControlUI& row) const;
    [[nodiscard]] int headerCount() const { return m_header != nullptr ? 1 : 0; }

    void setCurrent(int index, bool reveals);
    void showSelected(int index, bool selected);
    void selectOnly(Range range, bool keepsOthers);
    void selectAll();
    bool onKey(const platform::Event& key);
    bool onControlKey(const platform::Event& key);
    [[nodiscard]] std::optional<int> keyTarget(platform::Key key) const;
    [[nodiscard]] int rowAtOffset(int pixels) const;
    [[nodiscard]] int enabledRow(int index, int step) const;
    [[nodiscard]] bool canPick(int index) const;

    std::unique_ptr<CListHeader> m_header;
    std::unique_ptr<CScrollBarUI> m_scrollBar;
    ListRows m_rows;
    RowMaker m_maker;
    ItemStyle m_itemStyle;
    Rect m_rowsRect;
    Size m_measuredFor; ///< the room that the heights were measured for
    Rect m_rowInset;    ///< of container rows that come without an inset of their own
    int m_current = -1; ///< where the arrow keys go on; not selected once Ctrl has deselected it
    int m_anchor = -1;  ///< where Shift selects from
    int m_reveal = -1;  ///< scrolled into view by the next layout
    int m_layout = 0;   ///< the number of the last one
    bool m_isMulti = false;
    bool m_pressActivates = false;
};

} // namespace toolkit
