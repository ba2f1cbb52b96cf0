// Which rows of a list are selected, and what assistive technology sees of them.
#include <algorithm>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Event.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListHeader.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/controls/ListRows.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"

namespace toolkit {

int CListUI::GetCurSel() const {
    if (isSelected(m_current) || !m_isMulti) {
        return m_current;
    }
    const std::vector<int> rows = selectedRows();
    return rows.empty() ? -1 : rows.front();
}

std::vector<int> CListUI::selectedRows() const {
    std::vector<int> rows;
    for (int row = 0; row < GetCount(); ++row) {
        if (isSelected(row)) {
            rows.push_back(row);
        }
    }
    return rows;
}

void CListUI::showSelected(int index, bool selected) {
    if (!m_rows.contains(index)) {
        return;
    }
    m_rows.select(index, selected);
    CControlUI* row = m_rows.made(index);
    if (auto* label = controlCast<CListLabelElementUI>(row)) {
        label->setSelected(selected);
    } else if (auto* container = controlCast<CListContainerElementUI>(row)) {
        container->setSelected(selected);
    }
}

/// Of the range, the rows that can be picked.
void CListUI::selectOnly(Range range, bool keepsOthers) {
    bool changed = false;
    for (int row = 0; row < GetCount(); ++row) {
        const bool wanted =
            row >= range.first && row < range.last ? canPick(row) : keepsOthers && isSelected(row);
        if (wanted != isSelected(row)) {
            showSelected(row, wanted);
            changed = true;
        }
    }
    if (changed) {
        accessibleChanged(platform::AccessibleChange::selection);
    }
}

void CListUI::setCurrent(int index, bool reveals) {
    if (m_isMulti) {
        selectOnly({index, index + 1}, false);
    } else if (index != m_current) {
        showSelected(m_current, false);
        showSelected(index, true);
    }
    m_current = m_anchor = index;
    if (reveals) {
        revealRow(index);
    }
}

bool CListUI::SelectItem(int index, bool takeFocus) {
    const CPaintManagerUI::Busy busy(GetManager());
    if (index < -1 || index >= GetCount()) {
        return false;
    }
    const bool changed = index != GetCurSel();
    setCurrent(index, true);
    if (takeFocus && GetManager() != nullptr) {
        GetManager()->SetFocus(this);
    }
    // The handler of the control that lost the focus may have changed the items.
    if (changed && index >= 0 && m_current == index) {
        notify(kItemSelect, index);
    }
    return true;
}

void CListUI::SelectItems(const std::vector<int>& rows) {
    const CPaintManagerUI::Busy busy(GetManager());
    const auto last =
        std::find_if(rows.rbegin(), rows.rend(), [this](int row) { return m_rows.contains(row); });
    if (last == rows.rend()) {
        static_cast<void>(SelectItem(-1));
        return;
    }
    const bool changed = *last != GetCurSel();
    setCurrent(*last, true);
    for (const int row : rows) {
        if (m_isMulti && m_rows.contains(row)) {
            showSelected(row, true);
        }
    }
    if (changed) {
        notify(kItemSelect, *last);
    }
}

bool CListUI::canPick(int index) const {
    const CControlUI* row = m_rows.made(index);
    return m_rows.contains(index) && IsEnabled() && (row == nullptr || row->isOwnEnabled());
}

bool CListUI::pick(int index, bool reveals) {
    const CPaintManagerUI::Busy busy(GetManager());
    if (!canPick(index)) {
        return false;
    }
    setCurrent(index, reveals);
    notify(kItemSelect, index);
    return true;
}

bool CListUI::pickMore(int index, const platform::Modifiers& modifiers, bool reveals) {
    const CPaintManagerUI::Busy busy(GetManager());
    if (!m_isMulti || !(modifiers.shift || modifiers.control) || !canPick(index)) {
        return false;
    }
    if (modifiers.shift) {
        m_anchor = m_anchor >= 0 ? m_anchor : index;
        selectOnly({std::min(m_anchor, index), std::max(m_anchor, index) + 1}, modifiers.control);
    } else {
        showSelected(index, !isSelected(index));
        accessibleChanged(platform::AccessibleChange::selection);
        m_anchor = index;
    }
    m_current = index;
    if (reveals) {
        revealRow(index);
    }
    notify(kItemSelect, index);
    return true;
}

void CListUI::selectAll() {
    const CPaintManagerUI::Busy busy(GetManager());
    selectOnly({0, GetCount()}, false);
    m_current = std::max(m_current, 0);
    notify(kItemSelect, m_current);
}

bool CListUI::pressRow(const CControlUI& row, const TEventUI& event) {
    const CPaintManagerUI::Busy busy(GetManager());
    const int index = GetItemIndex(&row);
    if (event.native.button == platform::MouseButton::right) {
        if (!m_isMulti || !isSelected(index)) {
            pick(index, false);
        }
        return false; // a menu for all that are selected
    }
    if (pickMore(index, event.native.modifiers, false)) {
        if (GetManager() != nullptr) {
            GetManager()->SetFocus(this); // the keys that select more are the list's
        }
        return true;
    }
    const bool isDouble = event.Type == EventType::doubleClick;
    if (pick(index, false) && isDouble != m_pressActivates) { // once for two clicks, either way
        activate();
    }
    return false;
}

void CListUI::setRowSelected(const CControlUI& row, bool selected) {
    const int index = GetItemIndex(&row);
    if (isSelected(index) != selected && !pickMore(index, {.control = true}, false) && selected) {
        pick(index, false);
    }
}

void CListUI::activate() {
    const CPaintManagerUI::Busy busy(GetManager());
    if (const int row = GetCurSel(); row >= 0) {
        notify(kItemActivate, row);
    }
}

platform::AccessibleRole CListUI::accessibleRole() const {
    return platform::AccessibleRole::list;
}

platform::AccessibleState CListUI::accessibleState() const {
    platform::AccessibleState state = CContainerUI::accessibleState();
    state.multiSelectable = m_isMulti;
    return state;
}

int CListUI::accessibleChildCount() const {
    return headerCount() + GetCount() + 1;
}

platform::Accessible* CListUI::accessibleChild(int index) const {
    if (index == accessibleChildCount() - 1) {
        return m_scrollBar.get();
    }
    return index < headerCount() ? childAt(index) : GetItemAt(index - headerCount());
}

int CListUI::accessibleIndexOf(const platform::Accessible& child) const {
    if (&child == m_scrollBar.get()) {
        return accessibleChildCount() - 1;
    }
    const int row = GetItemIndex(dynamic_cast<const CControlUI*>(&child));
    return row >= 0 ? row + headerCount() : &child == m_header.get() ? 0 : -1;
}

platform::Accessible* CListUI::accessibleChildAt(Point point) const {
    if (m_rowsRect.contains(point) && m_rows.isMeasured()) {
        const int row = m_rows.rowAt(point.y - m_rowsRect.top + m_scrollBar->model().offset());
        CControlUI* made = m_rows.made(row);
        return made != nullptr && made->GetPos().contains(point) ? made : nullptr;
    }
    for (CControlUI* part : {childAt(0), childAt(childCount() - 1)}) {
        if (part != nullptr && part->isShown() && part->GetPos().contains(point)) {
            return part;
        }
    }
    return nullptr;
}

std::vector<platform::Accessible*> CListUI::accessibleSelection() const {
    std::vector<platform::Accessible*> rows;
    for (const int row : selectedRows()) {
        rows.push_back(GetItemAt(row));
    }
    return rows;
}

} // namespace toolkit
