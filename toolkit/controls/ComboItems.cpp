// The items of a combo: controls of its own, or texts of a shared list that become controls on
// request.
#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListLabelElementUI.h"

namespace toolkit {

CControlUI* CComboUI::Add(std::unique_ptr<CControlUI> control) {
    return AddAt(std::move(control), GetCount());
}

CControlUI* CComboUI::AddAt(std::unique_ptr<CControlUI> control, int index) {
    auto* item = controlCast<CListLabelElementUI>(control.get());
    if (item == nullptr || index < 0 || index > GetCount()) {
        return nullptr;
    }
    makeOwnItems();
    static_cast<void>(control.release()); // the same object, owned under its own kind from here on
    m_comboItems.insert(m_comboItems.begin() + index, Item(item));
    item->attach(nullptr, this);
    if (m_current >= index) {
        ++m_current;
    }
    CloseDrop();
    Invalidate();
    return item;
}

void CComboUI::SetItemTexts(std::shared_ptr<const Texts> texts) {
    RemoveAll();
    m_texts = std::move(texts);
}

int CComboUI::GetCount() const {
    return static_cast<int>(m_texts != nullptr ? m_texts->size() : m_comboItems.size());
}

CControlUI* CComboUI::GetItemAt(int index) const {
    if (index < 0 || index >= GetCount()) {
        return nullptr;
    }
    m_comboItems.resize(static_cast<std::size_t>(GetCount()));
    Item& item = m_comboItems[static_cast<std::size_t>(index)];
    if (item == nullptr) {
        item = std::make_unique<CListLabelElementUI>();
        item->SetText((*m_texts)[static_cast<std::size_t>(index)]);
        item->attach(nullptr, const_cast<CComboUI*>(this));
    }
    return item.get();
}

int CComboUI::GetItemIndex(const CControlUI* control) const {
    const auto found =
        std::find_if(m_comboItems.begin(), m_comboItems.end(),
                     [&](const Item& item) { return item != nullptr && item.get() == control; });
    return found == m_comboItems.end() ? -1 : static_cast<int>(found - m_comboItems.begin());
}

std::u16string CComboUI::GetItemText(int index) const {
    if (index < 0 || index >= GetCount()) {
        return {};
    }
    const auto at = static_cast<std::size_t>(index);
    const bool made = at < m_comboItems.size() && m_comboItems[at] != nullptr;
    return made ? m_comboItems[at]->GetText() : (*m_texts)[at];
}

int CComboUI::FindItemText(std::u16string_view text) const {
    for (int i = 0; i < GetCount(); ++i) {
        if (GetItemText(i) == text) {
            return i;
        }
    }
    return -1;
}

bool CComboUI::IsItemEnabled(int index) const {
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && index < GetCount() &&
           (at >= m_comboItems.size() || m_comboItems[at] == nullptr ||
            m_comboItems[at]->isOwnEnabled());
}

void CComboUI::makeOwnItems() {
    for (int i = 0; m_texts != nullptr && i < GetCount(); ++i) {
        static_cast<void>(GetItemAt(i)); // makes it
    }
    m_texts = nullptr;
}

bool CComboUI::RemoveAt(int index) {
    if (index < 0 || index >= GetCount()) {
        return false;
    }
    makeOwnItems();
    std::unique_ptr<CControlUI> item = std::move(m_comboItems[static_cast<std::size_t>(index)]);
    m_comboItems.erase(m_comboItems.begin() + index);
    if (m_current >= index) {
        m_current = m_current == index ? -1 : m_current - 1;
    }
    CloseDrop();
    Invalidate();
    retire(std::move(item));
    return true;
}

void CComboUI::RemoveAll() {
    CloseDrop();
    m_current = -1;
    m_texts = nullptr;
    std::vector<Item> items = std::exchange(m_comboItems, {});
    Invalidate();
    for (Item& item : items) {
        if (item != nullptr) {
            retire(std::move(item));
        }
    }
}

} // namespace toolkit
