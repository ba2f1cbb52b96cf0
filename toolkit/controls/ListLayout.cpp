// Where the rows of a list are, and their painting: of all rows, those in and near the view alone.
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/Canvas.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListHeader.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/controls/ListRows.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/input/MouseInput.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Popup.h"

namespace toolkit {
namespace {

/// As many rows above and below the view are kept like those in it.
constexpr int kNear = 24;

} // namespace

int CListUI::rowHeight(const CControlUI& row, Size available) const {
    const int wanted = row.EstimateSize(available).height;
    return row.limited({0, wanted > 0 ? wanted : m_itemStyle.height}).height;
}

void CListUI::childNeedsUpdate() {
    m_rows.forgetHeights();
}

void CListUI::layoutChildren(const Rect& content) {
    ++m_layout;
    int top = content.top;
    if (m_header != nullptr) {
        const int height = m_header->EstimateSize(content.size()).height;
        m_header->SetPos(Rect::at(content.left, top, content.width(), height));
        top += height;
    }
    m_rowsRect = {content.left, top, content.right, std::max(top, content.bottom)};
    if (std::exchange(m_measuredFor, content.size()) != content.size()) {
        m_rows.forgetHeights();
    }
    if (!m_rows.isMeasured()) {
        m_rows.measure(m_maker.height, [&](const CControlUI& row) {
            return row.isShown() ? rowHeight(row, content.size()) : 0;
        });
        Invalidate();
    }
    ScrollModel& scroll = m_scrollBar->model();
    scroll.setExtent(m_rows.top(GetCount()), m_rowsRect.height());
    if (scroll.isNeeded()) {
        const int left = m_rowsRect.right - m_scrollBar->width();
        m_scrollBar->SetPos({left, m_rowsRect.top, m_rowsRect.right, m_rowsRect.bottom});
        m_rowsRect.right = left;
    } else {
        m_scrollBar->SetPos({});
    }
    if (m_reveal >= 0 && m_reveal < GetCount() && scroll.page() > 0) {
        scroll.reveal(m_rows.top(m_reveal), m_rows.top(m_reveal + 1));
        m_reveal = -1;
        m_scrollBar->Invalidate();
    }
    placeRows();
}

CListUI::Range CListUI::rowsIn(const Rect& area) const {
    const Rect seen = area.intersected(m_rowsRect);
    if (seen.isEmpty() || GetCount() == 0 || !m_rows.isMeasured()) {
        return {0, 0};
    }
    const int above = m_rowsRect.top - m_scrollBar->model().offset();
    return {m_rows.rowAt(seen.top - above), m_rows.rowAt(seen.bottom - 1 - above) + 1};
}

void CListUI::placeRow(int index) {
    CControlUI* row = m_rows.made(index);
    if (row != nullptr && m_rows.isMeasured() && !m_rowsRect.isEmpty() &&
        m_rows.takePlacing(index, m_layout)) {
        const int above = m_rowsRect.top - m_scrollBar->model().offset();
        row->SetPos({m_rowsRect.left, above + m_rows.top(index), m_rowsRect.right,
                     above + m_rows.top(index + 1)});
    }
}

/// Rows that have just left the view are placed as well, so that nothing of them stays in it.
void CListUI::placeRows() {
    const Range seen = rowsIn(m_rowsRect);
    for (int row = seen.first; row < seen.last; ++row) {
        makeRow(row);
    }
    const Range near{seen.first - kNear, seen.last + kNear};
    for (ListRows::Control& row :
         m_rows.unmake(near.first, near.last,
                       [&](const CControlUI& control) { return !isNeeded(control); })) {
        retire(std::move(row));
    }
    for (int place = m_rows.placeOf(near.first);
         place < m_rows.madeCount() && m_rows.rowAtPlace(place) < near.last; ++place) {
        placeRow(m_rows.rowAtPlace(place));
    }
    if (GetManager() != nullptr) {
        for (CControlUI* used : {GetManager()->GetFocus(), GetManager()->mouse().pressed()}) {
            if (used != nullptr && used->isInside(this)) {
                settle(*used);
            }
        }
    }
}

bool CListUI::isNeeded(const CControlUI& row) const {
    CPaintManagerUI* manager = GetManager();
    if (manager == nullptr) {
        return !row.isShown();
    }
    const auto holds = [&row](const CControlUI* control) {
        return control != nullptr && control->isInside(&row);
    };
    return !row.isShown() || manager->focusKeeper().remembers(row) ||
           holds(manager->mouse().pressed()) || holds(manager->mouse().hot()) ||
           (manager->popup() != nullptr && holds(manager->popup()->owner()));
}

void CListUI::settle(const CControlUI& child) {
    for (const CControlUI* control = &child; control != nullptr; control = control->GetParent()) {
        if (control->GetParent() == this) {
            placeRow(GetItemIndex(control));
        }
    }
}

void CListUI::reveal(CControlUI& descendant) {
    for (const CControlUI* row = &descendant; row != nullptr && row != this;
         row = row->GetParent()) {
        if (row->GetParent() == this) {
            revealRow(GetItemIndex(row));
        }
    }
    CContainerUI::reveal(descendant);
}

void CListUI::revealRow(int index) {
    if (m_rows.contains(index)) {
        m_reveal = index;
        NeedUpdate();
    }
}

void CListUI::DoPaint(platform::Canvas& canvas, const Rect& dirty) {
    CControlUI::DoPaint(canvas, dirty);
    const Rect clip = m_rowsRect.intersected(canvas.clip());
    if (!clip.isEmpty()) {
        const platform::ClipScope scope(canvas, clip);
        const Range touched = rowsIn(dirty.intersected(clip));
        for (int row = touched.first; row < touched.last; ++row) {
            if (CControlUI* made = m_rows.made(row)) {
                paintChild(canvas, dirty.intersected(clip), *made);
            }
        }
    }
    const platform::ClipScope scope(canvas, GetPos());
    if (m_header != nullptr) {
        paintChild(canvas, dirty, *m_header);
    }
    paintChild(canvas, dirty, *m_scrollBar);
}

} // namespace toolkit
