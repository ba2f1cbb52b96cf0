#include "toolkit/controls/CListContainerElementUI.h"

#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/input/TEventUI.h"

namespace toolkit {

void* CListContainerElementUI::GetInterface(std::u16string_view name) {
    return name == u"ListContainerElement" ? this : CContainerUI::GetInterface(name);
}

void CListContainerElementUI::setSelected(bool selected) {
    if (m_selected != selected) {
        m_selected = selected;
        Invalidate();
        accessibleChanged(platform::AccessibleChange::state);
    }
}

bool CListContainerElementUI::DoEvent(const TEventUI& event) {
    if (event.Type != EventType::mouseEnter && event.Type != EventType::mouseLeave) {
        return CContainerUI::DoEvent(event);
    }
    m_hot = event.Type == EventType::mouseEnter;
    Invalidate();
    return true;
}

void CListContainerElementUI::paintBackground(platform::Canvas& canvas) {
    if (const auto* list = controlCast<CListUI>(GetParent())) {
        list->itemStyle().paintBackground(canvas, *GetManager(), GetPos(),
                                          {IsEnabled(), m_selected, m_hot});
    }
    CContainerUI::paintBackground(canvas);
}

bool CListContainerElementUI::notePress(const TEventUI& event) {
    auto* list = controlCast<CListUI>(GetParent());
    return list != nullptr && list->pressRow(*this, event);
}

platform::AccessibleRole CListContainerElementUI::accessibleRole() const {
    return platform::AccessibleRole::listItem;
}

namespace {

void appendTexts(const CControlUI& from, std::u16string& texts) {
    for (int i = 0; i < from.childCount(); ++i) {
        const std::u16string text = from.childAt(i)->GetText();
        if (!text.empty()) {
            texts.append(texts.empty() ? u"" : u", ").append(text);
        }
        appendTexts(*from.childAt(i), texts);
    }
}

} // namespace

std::u16string CListContainerElementUI::accessibleName() const {
    std::u16string name = GetText();
    if (name.empty()) {
        appendTexts(*this, name);
    }
    return name;
}

platform::AccessibleState CListContainerElementUI::accessibleState() const {
    platform::AccessibleState state = CContainerUI::accessibleState();
    state.selectable = true;
    state.selected = m_selected;
    return state;
}

void CListContainerElementUI::accessiblePress() {
    notePress({});
}

void CListContainerElementUI::accessibleSelect(bool selected) {
    if (auto* list = controlCast<CListUI>(GetParent())) {
        list->setRowSelected(*this, selected);
    }
}

} // namespace toolkit
