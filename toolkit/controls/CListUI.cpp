// The rows of a list, added and announced, and its children.
#include "toolkit/controls/CListUI.h"

#include <algorithm>
#include <utility>

#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"

namespace toolkit {

namespace {

bool isRow(CControlUI* control) {
    return controlCast<CListLabelElementUI>(control) != nullptr ||
           controlCast<CListContainerElementUI>(control) != nullptr;
}

} // namespace

CListUI::CListUI() : m_scrollBar(std::make_unique<CScrollBarUI>()) {
    m_scrollBar->setOnScroll([this] { NeedUpdate(); });
}

CListUI::~CListUI() = default;

void* CListUI::GetInterface(std::u16string_view name) {
    return name == u"List" ? this : CContainerUI::GetInterface(name);
}

CControlUI* CListUI::Add(std::unique_ptr<CControlUI> control) {
    if (auto* header = controlCast<CListHeader>(control.get())) {
        if (m_header != nullptr) {
            retire(std::exchange(m_header, nullptr));
        }
        static_cast<void>(
            control.release()); // the same object, owned under its own kind from here on
        m_header.reset(header);
        header->attach(GetManager(), this);
        NeedUpdate();
        return header;
    }
    return AddAt(std::move(control), GetCount());
}

CControlUI* CListUI::AddAt(std::unique_ptr<CControlUI> control, int index) {
    if (!isRow(control.get()) || index < 0 || index > GetCount()) {
        return nullptr;
    }
    CControlUI* added = control.get();
    giveInset(*added);
    m_rows.insert(index, std::move(control));
    added->attach(GetManager(), this);
    rowsMoved(index, 1);
    return added;
}

void CListUI::AnnounceAt(int index) {
    if (index >= 0 && index <= GetCount()) {
        m_rows.insert(index, nullptr);
        rowsMoved(index, 1);
    }
}

void CListUI::rowsMoved(int from, int by) {
    for (int* kept : {&m_current, &m_anchor, &m_reveal}) {
        if (by < 0 && *kept == from) {
            *kept = -1;
        } else if (*kept >= from) {
            *kept += by;
        }
    }
    NeedUpdate();
    accessibleChanged(platform::AccessibleChange::children);
}

void CListUI::SetRows(int count, RowMaker maker) {
    RemoveAll();
    m_maker = std::move(maker);
    m_rows.append(std::max(count, 0));
    accessibleChanged(platform::AccessibleChange::children);
}

bool CListUI::RemoveAt(int index) {
    if (!m_rows.contains(index)) {
        return false;
    }
    ListRows::Control control = m_rows.remove(index);
    if (control != nullptr) {
        retire(std::move(control));
    }
    rowsMoved(index, -1);
    return true;
}

void CListUI::RemoveAll() {
    m_current = m_anchor = m_reveal = -1;
    std::vector<ListRows::Control> controls = m_rows.clear();
    NeedUpdate();
    for (ListRows::Control& control : controls) {
        retire(std::move(control));
    }
    accessibleChanged(platform::AccessibleChange::children);
    m_scrollBar->model().setOffset(0);
}

void CListUI::giveInset(CControlUI& row) const {
    if (auto* container = controlCast<CListContainerElementUI>(&row);
        container != nullptr && container->GetInset() == Rect{}) {
        container->SetInset(m_rowInset);
    }
}

CControlUI* CListUI::makeRow(int index) {
    if (CControlUI* made = m_rows.made(index)) {
        return made;
    }
    std::unique_ptr<CControlUI> control = m_maker.make ? m_maker.make(index) : nullptr;
    if (!isRow(control.get())) {
        control = std::make_unique<CListLabelElementUI>();
    }
    CControlUI* row = control.get();
    row->SetFixedHeight(m_maker.height);
    giveInset(*row);
    m_rows.make(index, std::move(control));
    showSelected(index, isSelected(index));
    row->attach(GetManager(), this);
    return row;
}

CControlUI* CListUI::GetItemAt(int index) const {
    if (!m_rows.contains(index)) {
        return nullptr;
    }
    auto* self = const_cast<CListUI*>(this);
    CControlUI* row = self->makeRow(index);
    self->placeRow(index);
    return row;
}

int CListUI::GetItemIndex(const CControlUI* control) const {
    return m_rows.indexOf(control);
}

bool CListUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (name == u"rowinset") {
        assignIf(m_rowInset, parseRect(value));
        return true;
    }
    if (name == u"multiselect") {
        assignIf(m_isMulti, parseBool(value));
        return true;
    }
    if (name == u"pressactivates") {
        assignIf(m_pressActivates, parseBool(value));
        return true;
    }
    if (!m_itemStyle.apply(name, value)) {
        return CContainerUI::SetAttribute(name, value);
    }
    m_rows.forgetHeights();
    NeedUpdate();
    return true;
}

int CListUI::childCount() const {
    return headerCount() + m_rows.madeCount() + 1;
}

CControlUI* CListUI::childAt(int index) const {
    const int place = index - headerCount();
    if (place == m_rows.madeCount()) {
        return m_scrollBar.get();
    }
    if (place >= 0 && place < m_rows.madeCount()) {
        return m_rows.madeAt(place);
    }
    return index == 0 ? m_header.get() : nullptr;
}

CControlUI* CListUI::childBeside(const CControlUI* child, bool backward) const {
    // Header, rows, scroll bar: in these terms rows 0 to GetCount() - 1 stand between -1 and
    // GetCount().
    int at = backward ? GetCount() + 1 : -2;
    if (child != nullptr) {
        at = child == m_header.get()      ? -1
             : child == m_scrollBar.get() ? GetCount()
                                          : GetItemIndex(child);
    }
    const int step = backward ? -1 : 1;
    at += at + step == -1 && m_header == nullptr ? 2 * step : step;
    if (!m_maker.takesFocus && m_rows.contains(at) && m_rows.made(at) == nullptr) {
        const int next = m_rows.placeOf(at) - (backward ? 1 : 0);
        const bool isMade = next >= 0 && next < m_rows.madeCount();
        at = isMade ? m_rows.rowAtPlace(next) : backward ? -1 : GetCount();
    }
    return at == -1 ? m_header.get() : at == GetCount() ? m_scrollBar.get() : GetItemAt(at);
}

CControlUI* CListUI::controlAt(Point point, Meeting kind) {
    if (!isShown() || !GetPos().contains(point)) {
        return nullptr;
    }
    if (m_rowsRect.contains(point) && m_rows.isMeasured()) {
        const int row = m_rows.rowAt(point.y - m_rowsRect.top + m_scrollBar->model().offset());
        CControlUI* made = m_rows.made(row);
        if (CControlUI* found = made != nullptr ? made->controlAt(point, kind) : nullptr) {
            return found;
        }
    }
    if (CControlUI* bar = m_scrollBar->controlAt(point, kind)) {
        return bar;
    }
    CControlUI* inHeader = m_header != nullptr ? m_header->controlAt(point, kind) : nullptr;
    return inHeader != nullptr ? inHeader : meets(point, kind) ? this : nullptr;
}

} // namespace toolkit
