#include "toolkit/controls/CContainerUI.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/Canvas.h"
#include "platform/Geometry.h"
#include "toolkit/layout/Anchor.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {

CContainerUI::~CContainerUI() = default;

void* CContainerUI::GetInterface(std::u16string_view name) {
    return name == u"Container" ? this : CControlUI::GetInterface(name);
}

CControlUI* CContainerUI::Add(std::unique_ptr<CControlUI> control) {
    // Not GetCount(): a kind may count more than what stands here.
    return CContainerUI::AddAt(std::move(control), static_cast<int>(m_items.size()));
}

CControlUI* CContainerUI::AddAt(std::unique_ptr<CControlUI> control, int index) {
    if (control == nullptr || index < 0 || index > static_cast<int>(m_items.size())) {
        return nullptr;
    }
    CControlUI* added = control.get();
    m_items.insert(m_items.begin() + index, std::move(control));
    added->attach(GetManager(), this);
    NeedUpdate();
    accessibleChanged(platform::AccessibleChange::children);
    return added;
}

CControlUI* CContainerUI::GetItemAt(int index) const {
    return index >= 0 && index < static_cast<int>(m_items.size())
               ? m_items[static_cast<std::size_t>(index)].get()
               : nullptr;
}

int CContainerUI::GetItemIndex(const CControlUI* control) const {
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [&](const auto& item) { return item.get() == control; });
    return found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
}

bool CContainerUI::RemoveAt(int index) {
    if (index < 0 || index >= static_cast<int>(m_items.size())) {
        return false;
    }
    std::unique_ptr<CControlUI> control = std::move(m_items[static_cast<std::size_t>(index)]);
    m_items.erase(m_items.begin() + index);
    NeedUpdate();
    retire(std::move(control));
    accessibleChanged(platform::AccessibleChange::children);
    return true;
}

void CContainerUI::RemoveAll() {
    std::vector<std::unique_ptr<CControlUI>> controls = std::move(m_items);
    m_items.clear();
    NeedUpdate();
    for (std::unique_ptr<CControlUI>& control : controls) {
        retire(std::move(control));
    }
    accessibleChanged(platform::AccessibleChange::children);
}

void CContainerUI::retire(std::unique_ptr<CControlUI> control) {
    if (GetManager() != nullptr) {
        GetManager()->Retire(std::move(control));
    }
}

void CContainerUI::SetInset(const Rect& inset) {
    m_inset = inset;
    NeedUpdate();
}

platform::Rect CContainerUI::contentRect() const {
    const Rect& pos = GetPos();
    return {pos.left + m_inset.left, pos.top + m_inset.top, pos.right - m_inset.right,
            pos.bottom - m_inset.bottom};
}

void CContainerUI::SetPos(const Rect& pos) {
    CControlUI::SetPos(pos);
    const Rect content = contentRect();
    if (!m_designed) {
        const Size all = m_size.value_or(pos.size());
        m_designed = {all.width - m_inset.left - m_inset.right,
                      all.height - m_inset.top - m_inset.bottom};
    }
    layoutChildren(content);
}

bool CContainerUI::placeFixed(CControlUI& child, const Rect& content) const {
    if (!child.GetPlace()) {
        return false;
    }
    const Size now = content.size();
    const Rect place = anchored(*child.GetPlace(), child.anchor(), m_designed.value_or(now), now);
    child.SetPos(place.translated(content.left, content.top));
    return true;
}

void CContainerUI::layoutChildren(const Rect& content) {
    for (const std::unique_ptr<CControlUI>& child : m_items) {
        if (placeFixed(*child, content)) {
            continue;
        }
        const Rect& padding = child->GetPadding();
        const Rect cell{content.left + padding.left, content.top + padding.top,
                        content.right - padding.right, content.bottom - padding.bottom};
        Size size = child->EstimateSize(cell.size());
        size = child->limited({size.width > 0 ? size.width : cell.width(),
                               size.height > 0 ? size.height : cell.height()});
        child->SetPos(Rect::at(cell.left, cell.top, size.width, size.height));
    }
}

bool CContainerUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (name == u"size") {
        assignIf(m_size, parseSize(value));
        return true;
    }
    if (name != u"inset") {
        return CControlUI::SetAttribute(name, value);
    }
    if (const auto inset = parseRect(value)) {
        SetInset(*inset);
    }
    return true;
}

void CContainerUI::DoPaint(platform::Canvas& canvas, const Rect& dirty) {
    CControlUI::DoPaint(canvas, dirty);
    const Rect clip = childClip().intersected(canvas.clip());
    if (clip.isEmpty()) {
        return;
    }
    const platform::ClipScope scope(canvas, clip);
    for (const std::unique_ptr<CControlUI>& child : m_items) {
        paintChild(canvas, dirty.intersected(clip), *child);
    }
}

void CContainerUI::paintChild(platform::Canvas& canvas, const Rect& dirty, CControlUI& child) {
    if (!child.isShown() || dirty.intersected(child.GetPos()).isEmpty()) {
        return;
    }
    const platform::ClipScope scope(canvas, child.GetPos());
    child.DoPaint(canvas, child.PaintsWhole() ? child.GetPos() : dirty);
}

CControlUI* CContainerUI::childAt(int index) const {
    return CContainerUI::GetItemAt(index);
}

CControlUI* CContainerUI::controlAt(Point point, Meeting kind) {
    if (!isShown() || !GetPos().contains(point)) {
        return nullptr;
    }
    if (childClip().contains(point)) {
        for (std::size_t i = m_items.size(); i-- > 0;) {
            if (CControlUI* found = m_items[i]->controlAt(point, kind)) {
                return found;
            }
        }
    }
    return meets(point, kind) ? this : nullptr;
}

void CContainerUI::attach(CPaintManagerUI* manager, CControlUI* parent) {
    CControlUI::attach(manager, parent);
    for (int i = 0; i < childCount(); ++i) {
        childAt(i)->attach(manager, this);
    }
}

platform::AccessibleRole CContainerUI::accessibleRole() const {
    return GetParent() == nullptr && GetManager() != nullptr ? platform::AccessibleRole::window
                                                             : platform::AccessibleRole::group;
}

} // namespace toolkit
