#include "toolkit/controls/CListLabelElementUI.h"

#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/input/TEventUI.h"

namespace toolkit {

void* CListLabelElementUI::GetInterface(std::u16string_view name) {
    return name == u"ListLabelElement" ? this : CLabelUI::GetInterface(name);
}

void CListLabelElementUI::setSelected(bool selected) {
    if (m_selected != selected) {
        m_selected = selected;
        Invalidate();
        accessibleChanged(platform::AccessibleChange::state);
    }
}

bool CListLabelElementUI::DoEvent(const TEventUI& event) {
    if (event.Type != EventType::mouseEnter && event.Type != EventType::mouseLeave) {
        return CLabelUI::DoEvent(event);
    }
    m_hot = event.Type == EventType::mouseEnter;
    Invalidate();
    return true;
}

void CListLabelElementUI::DoPaint(platform::Canvas& canvas, const Rect& dirty) {
    const auto* list = controlCast<CListUI>(GetParent());
    if (list == nullptr) {
        CLabelUI::DoPaint(canvas, dirty);
        return;
    }
    const ItemState state{IsEnabled(), m_selected, m_hot};
    list->itemStyle().paintBackground(canvas, *GetManager(), GetPos(), state);
    list->itemStyle().paintText(canvas, *GetManager(), GetPos(), GetText(), state);
}

bool CListLabelElementUI::notePress(const TEventUI& event) {
    auto* list = controlCast<CListUI>(GetParent());
    return list != nullptr && list->pressRow(*this, event);
}

platform::AccessibleRole CListLabelElementUI::accessibleRole() const {
    return platform::AccessibleRole::listItem;
}

platform::AccessibleState CListLabelElementUI::accessibleState() const {
    platform::AccessibleState state = CLabelUI::accessibleState();
    state.selectable = true;
    const auto* combo = controlCast<CComboUI>(GetParent());
    state.selected =
        combo != nullptr ? combo->GetItemIndex(this) == combo->GetCurSel() : m_selected;
    return state;
}

void CListLabelElementUI::accessiblePress() {
    if (auto* combo = controlCast<CComboUI>(GetParent())) {
        combo->pick(combo->GetItemIndex(this));
    } else {
        notePress({});
    }
}

void CListLabelElementUI::accessibleSelect(bool selected) {
    if (auto* list = controlCast<CListUI>(GetParent())) {
        list->setRowSelected(*this, selected);
    }
}

} // namespace toolkit
