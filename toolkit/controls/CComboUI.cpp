#include "toolkit/controls/CComboUI.h"

#include <algorithm>

#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "toolkit/controls/DropListWindow.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/SkinImage.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "toolkit/window/Popup.h"

namespace toolkit {

struct CComboUI::Attributes {
    static const AttributeTable<CComboUI>& table();
};

const AttributeTable<CComboUI>& CComboUI::Attributes::table() {
    using Text = std::u16string_view;
    static const AttributeTable<CComboUI> attributes{
        {u"normalimage", [](CComboUI& c, Text v) { c.m_normalImage = v; }},
        {u"hotimage", [](CComboUI& c, Text v) { c.m_hotImage = v; }},
        {u"pushedimage", [](CComboUI& c, Text v) { c.m_pushedImage = v; }},
        {u"disabledimage", [](CComboUI& c, Text v) { c.m_disabledImage = v; }},
        {u"textcolor", [](CComboUI& c, Text v) { assignIf(c.m_textColor, parseSkinColor(v)); }},
        {u"disabledtextcolor",
         [](CComboUI& c, Text v) { assignIf(c.m_disabledTextColor, parseSkinColor(v)); }},
        {u"textpadding", [](CComboUI& c, Text v) { assignIf(c.m_textPadding, parseRect(v)); }},
        {u"font", [](CComboUI& c, Text v) { assignIf(c.m_font, parseInt(v)); }},
        {u"dropboxsize", [](CComboUI& c, Text v) { assignIf(c.m_dropBoxSize, parseSize(v)); }},
        {u"dropbordercolor",
         [](CComboUI& c, Text v) { assignIf(c.m_dropBorderColor, parseSkinColor(v)); }},
        {u"dropbkcolor",
         [](CComboUI& c, Text v) { assignIf(c.m_dropBackColor, parseSkinColor(v)); }},
    };
    return attributes;
}

CComboUI::CComboUI() = default;
CComboUI::~CComboUI() = default;

void* CComboUI::GetInterface(std::u16string_view name) {
    return name == u"Combo" ? this : CContainerUI::GetInterface(name);
}

std::u16string CComboUI::GetText() const {
    return GetItemText(m_current);
}

bool CComboUI::SelectItem(int index, bool takeFocus) {
    const CPaintManagerUI::Busy busy(GetManager());
    if (index < -1 || index >= GetCount()) {
        return false;
    }
    const bool changed = index != m_current;
    m_current = index;
    Invalidate();
    accessibleChanged(platform::AccessibleChange::value);
    if (takeFocus && GetManager() != nullptr) {
        GetManager()->SetFocus(this);
    }
    // The handler of the control that lost the focus may have changed the items.
    if (changed && index >= 0 && m_current == index) {
        notify(kItemSelect, index);
    }
    return true;
}

bool CComboUI::pick(int index) {
    const CPaintManagerUI::Busy busy(GetManager());
    if (!IsItemEnabled(index) || !IsEnabled()) {
        return false;
    }
    m_current = index;
    Invalidate();
    accessibleChanged(platform::AccessibleChange::value);
    notify(kItemSelect, index);
    return true;
}

bool CComboUI::IsDropped() const {
    return GetManager() != nullptr && GetManager()->popup() != nullptr &&
           GetManager()->popup()->owner() == this;
}

bool CComboUI::Drop() {
    if (GetManager() == nullptr || !IsEnabled() || GetCount() == 0) {
        return false;
    }
    const CPaintManagerUI::Busy busy(GetManager());
    GetManager()->SetFocus(this);
    if (!IsFocused() || GetCount() == 0) {
        return false; // the handler of the control that lost the focus changed things
    }
    Invalidate();
    return DropListWindow::of(*GetManager()).open(*this);
}

void CComboUI::CloseDrop() {
    if (IsDropped()) {
        GetManager()->popup()->close();
    }
}

void CComboUI::dropOrClose() {
    if (IsDropped()) {
        CloseDrop();
    } else {
        Drop();
    }
}

void CComboUI::forgetInput() {
    CloseDrop();
    m_hot = false;
}

bool CComboUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (!Attributes::table().apply(*this, name, value) && !m_itemStyle.apply(name, value)) {
        return CContainerUI::SetAttribute(name, value);
    }
    NeedUpdate();
    return true;
}

platform::Size CComboUI::EstimateSize(Size available) const {
    return withImageHeight(CContainerUI::EstimateSize(available), m_normalImage);
}

platform::Rect CComboUI::textRect() const {
    Rect around = m_textPadding.value_or(m_itemStyle.textPadding);
    // The image's edges hold the box's line and the arrow: text stays clear of the right one.
    if (!m_textPadding && GetManager() != nullptr) {
        if (const SkinImage* image = GetManager()->look().GetImage(m_normalImage)) {
            around.right = std::max(around.right, image->corner.right);
        }
    }
    const Rect& pos = GetPos();
    return {pos.left + around.left, pos.top + around.top, pos.right - around.right,
            pos.bottom - around.bottom};
}

void CComboUI::paintStatus(platform::Canvas& canvas) {
    if (!IsEnabled()) {
        if (!drawImage(canvas, m_disabledImage)) {
            drawImage(canvas, m_normalImage);
        }
        return;
    }
    const bool dropped = IsDropped();
    if ((dropped && drawImage(canvas, m_pushedImage)) ||
        ((dropped || m_hot) && drawImage(canvas, m_hotImage))) {
        return;
    }
    drawImage(canvas, m_normalImage);
}

void CComboUI::paintText(platform::Canvas& canvas) {
    const CPaintManagerUI& manager = *GetManager();
    TextLook look;
    look.font = manager.look().GetFont(m_font.value_or(m_itemStyle.font));
    look.color =
        paletteColor(IsEnabled() ? m_textColor.value_or(m_itemStyle.textColor)
                                 : m_disabledTextColor.value_or(m_itemStyle.disabledTextColor));
    paintTextLine(canvas, manager.fonts(), GetText(), textRect(), look);
}

std::u16string CComboUI::toolTipAt(Point /*point*/) const {
    if (GetManager() == nullptr || IsDropped()) {
        return {};
    }
    const CPaintManagerUI& manager = *GetManager();
    const std::u16string text = GetText();
    const platform::FontHandle font = manager.look().GetFont(m_font.value_or(m_itemStyle.font));
    return fitsInto(textRect().width(), text, font, manager.fonts()) ? GetToolTip() : text;
}

platform::AccessibleRole CComboUI::accessibleRole() const {
    return platform::AccessibleRole::comboBox;
}

platform::AccessibleState CComboUI::accessibleState() const {
    platform::AccessibleState state = CContainerUI::accessibleState();
    state.expandable = true;
    state.expanded = IsDropped();
    return state;
}

platform::Accessible* CComboUI::accessibleChild(int index) const {
    return GetItemAt(index);
}

int CComboUI::accessibleIndexOf(const platform::Accessible& child) const {
    return GetItemIndex(dynamic_cast<const CControlUI*>(&child));
}

std::vector<platform::Accessible*> CComboUI::accessibleSelection() const {
    platform::Accessible* current = GetItemAt(m_current);
    return current != nullptr ? std::vector{current} : std::vector<platform::Accessible*>();
}

void CComboUI::accessiblePress() {
    dropOrClose();
}

} // namespace toolkit
