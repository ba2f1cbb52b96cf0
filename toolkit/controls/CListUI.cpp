#include "toolkit/controls/CListUI.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/Canvas.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "toolkit/controls/ScrollModel.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"

namespace toolkit {
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
    if (controlCast<CListLabelElementUI>(control.get()) == nullptr &&
        controlCast<CListContainerElementUI>(control.get()) == nullptr) {
        return nullptr;
    }
    if (auto* row = controlCast<CListContainerElementUI>(control.get());
        row != nullptr && row->GetInset() == Rect{}) {
        row->SetInset(m_rowInset);
    }
    CControlUI* added = CContainerUI::AddAt(std::move(control), index);
    for (int* kept : {&m_current, &m_reveal}) {
        *kept += added != nullptr && *kept >= index ? 1 : 0;
    }
    return added;
}

bool CListUI::RemoveAt(int index) {
    if (!CContainerUI::RemoveAt(index)) {
        return false;
    }
    for (int* kept : {&m_current, &m_reveal}) {
        *kept = *kept == index ? -1 : *kept > index ? *kept - 1 : *kept;
    }
    return true;
}

void CListUI::RemoveAll() {
    m_current = -1;
    m_reveal = -1;
    CContainerUI::RemoveAll();
    m_scrollBar->model().setOffset(0);
}

void CListUI::markSelected(int index, bool selected) {
    CControlUI* row = GetItemAt(index);
    if (auto* label = controlCast<CListLabelElementUI>(row)) {
        label->setSelected(selected);
    } else if (auto* container = controlCast<CListContainerElementUI>(row)) {
        container->setSelected(selected);
    }
}

void CListUI::setCurrent(int index, bool reveals) {
    if (index != m_current) {
        markSelected(m_current, false);
        m_current = index;
        markSelected(index, true);
    }
    if (index >= 0 && reveals) {
        m_reveal = index;
        NeedUpdate();
    }
}

bool CListUI::SelectItem(int index, bool takeFocus) {
    const CPaintManagerUI::Busy busy(GetManager());
    if (index < -1 || index >= GetCount()) {
        return false;
    }
    const bool changed = index != m_current;
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

bool CListUI::pick(int index, bool reveals) {
    const CPaintManagerUI::Busy busy(GetManager());
    if (GetItemAt(index) == nullptr || !GetItemAt(index)->IsEnabled()) {
        return false;
    }
    setCurrent(index, reveals);
    notify(kItemSelect, index);
    return true;
}

void CListUI::activate() {
    const CPaintManagerUI::Busy busy(GetManager());
    if (m_current >= 0) {
        notify(kItemActivate, m_current);
    }
}

bool CListUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (name == u"rowinset") {
        assignIf(m_rowInset, parseRect(value));
        return true;
    }
    if (!m_itemStyle.apply(name, value)) {
        return CContainerUI::SetAttribute(name, value);
    }
    NeedUpdate();
    return true;
}

int CListUI::rowHeight(const CControlUI& row, Size available) const {
    const int wanted = row.EstimateSize(available).height;
    return row.limited({0, wanted > 0 ? wanted : m_itemStyle.height}).height;
}

void CListUI::layoutChildren(const Rect& content) {
    int top = content.top;
    if (m_header != nullptr) {
        const int height = m_header->EstimateSize(content.size()).height;
        m_header->SetPos(Rect::at(content.left, top, content.width(), height));
        top += height;
    }
    m_rowsRect = {content.left, top, content.right, std::max(top, content.bottom)};
    std::vector<int> tops{0};
    tops.reserve(items().size() + 1);
    for (const std::unique_ptr<CControlUI>& row : items()) {
        tops.push_back(tops.back() + (row->isShown() ? rowHeight(*row, content.size()) : 0));
    }
    ScrollModel& scroll = m_scrollBar->model();
    scroll.setExtent(tops.back(), m_rowsRect.height());
    if (scroll.isNeeded()) {
        const int left = m_rowsRect.right - m_scrollBar->width();
        m_scrollBar->SetPos({left, m_rowsRect.top, m_rowsRect.right, m_rowsRect.bottom});
        m_rowsRect.right = left;
    } else {
        m_scrollBar->SetPos({});
    }
    placeRows(tops);
}

void CListUI::placeRows(const std::vector<int>& tops) {
    ScrollModel& scroll = m_scrollBar->model();
    if (m_reveal >= 0 && m_reveal < GetCount() && scroll.page() > 0) {
        const auto row = static_cast<std::size_t>(m_reveal);
        scroll.reveal(tops[row], tops[row + 1]);
        m_reveal = -1;
        m_scrollBar->Invalidate();
    }
    for (std::size_t i = 0; i < items().size(); ++i) {
        items()[i]->SetPos({m_rowsRect.left, m_rowsRect.top + tops[i] - scroll.offset(),
                            m_rowsRect.right, m_rowsRect.top + tops[i + 1] - scroll.offset()});
    }
}

void CListUI::reveal(CControlUI& descendant) {
    for (int i = 0; i < GetCount(); ++i) {
        if (descendant.isInside(GetItemAt(i))) {
            m_reveal = i;
            NeedUpdate();
        }
    }
    CContainerUI::reveal(descendant);
}

int CListUI::childCount() const {
    return CContainerUI::childCount() + (m_header != nullptr ? 1 : 0) + 1;
}

CControlUI* CListUI::childAt(int index) const {
    if (m_header != nullptr && index-- == 0) {
        return m_header.get();
    }
    const int rows = CContainerUI::childCount();
    return index == rows ? m_scrollBar.get() : CContainerUI::childAt(index);
}

CControlUI* CListUI::controlAt(Point point) {
    CControlUI* found = CContainerUI::controlAt(point);
    if (found != this) {
        return found;
    }
    if (CControlUI* bar = m_scrollBar->controlAt(point)) {
        return bar;
    }
    CControlUI* inHeader = m_header != nullptr ? m_header->controlAt(point) : nullptr;
    return inHeader != nullptr ? inHeader : this;
}

void CListUI::DoPaint(platform::Canvas& canvas, const Rect& dirty) {
    CContainerUI::DoPaint(canvas, dirty);
    const platform::ClipScope scope(canvas, GetPos());
    if (m_header != nullptr) {
        paintChild(canvas, dirty, *m_header);
    }
    paintChild(canvas, dirty, *m_scrollBar);
}

platform::AccessibleRole CListUI::accessibleRole() const {
    return platform::AccessibleRole::list;
}

} // namespace toolkit
