#include "toolkit/controls/CControlUI.h"

#include <algorithm>

#include "platform/Bitmap.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/RoundBox.h"
#include "toolkit/skin/SkinImage.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {

struct CControlUI::Attributes {
    static const AttributeTable<CControlUI>& table();
};

const AttributeTable<CControlUI>& CControlUI::Attributes::table() {
    using Text = std::u16string_view;
    static const AttributeTable<CControlUI> attributes{
        {u"name", [](CControlUI& c, Text v) { c.SetName(v); }},
        {u"text", [](CControlUI& c, Text v) { c.SetText(v); }},
        {u"tooltip", [](CControlUI& c, Text v) { c.SetToolTip(v); }},
        {u"userdata", [](CControlUI& c, Text v) { c.SetUserData(v); }},
        {u"label", [](CControlUI& c, Text v) { c.SetLabel(v); }},
        {u"pos", [](CControlUI& c, Text v) { assignIf(c.m_place, parsePlace(v)); }},
        {u"anchor", [](CControlUI& c, Text v) { assignIf(c.m_anchor, parseAnchor(v)); }},
        {u"width",
         [](CControlUI& c, Text v) { setIf(c, &CControlUI::SetFixedWidth, parseInt(v)); }},
        {u"height",
         [](CControlUI& c, Text v) { setIf(c, &CControlUI::SetFixedHeight, parseInt(v)); }},
        {u"minwidth",
         [](CControlUI& c, Text v) { setIf(c, &CControlUI::SetMinWidth, parseInt(v)); }},
        {u"minheight",
         [](CControlUI& c, Text v) { setIf(c, &CControlUI::SetMinHeight, parseInt(v)); }},
        {u"maxwidth",
         [](CControlUI& c, Text v) { setIf(c, &CControlUI::SetMaxWidth, parseInt(v)); }},
        {u"maxheight",
         [](CControlUI& c, Text v) { setIf(c, &CControlUI::SetMaxHeight, parseInt(v)); }},
        {u"padding",
         [](CControlUI& c, Text v) { setIf(c, &CControlUI::SetPadding, parseRect(v)); }},
        {u"bkcolor", [](CControlUI& c, Text v) { assignIf(c.m_backColor, parseSkinColor(v)); }},
        {u"bkradius", [](CControlUI& c, Text v) { assignIf(c.m_backRadius, parseInt(v)); }},
        {u"bordercolor",
         [](CControlUI& c, Text v) { assignIf(c.m_borderColor, parseSkinColor(v)); }},
        {u"bordersize",
         [](CControlUI& c, Text v) {
             if (const auto all = parseInt(v)) {
                 c.m_borderSize = {*all, *all, *all, *all};
             } else {
                 assignIf(c.m_borderSize, parseRect(v));
             }
         }},
        {u"bkimage", [](CControlUI& c, Text v) { c.m_backImage = v; }},
        {u"foreimage", [](CControlUI& c, Text v) { c.m_foreImage = v; }},
        {u"focusedimage", [](CControlUI& c, Text v) { c.m_focusedImage = v; }},
        {u"icon", [](CControlUI& c, Text v) { c.SetIcon(v); }},
        {u"icontint", [](CControlUI& c, Text v) { c.m_icon.tint = v; }},
        {u"iconsize", [](CControlUI& c, Text v) { assignIf(c.m_icon.side, parseInt(v)); }},
        {u"iconpos",
         [](CControlUI& c, Text v) {
             if (const auto place = parseSize(v)) {
                 c.m_icon.place = {place->width, place->height};
             }
         }},
        {u"enabled",
         [](CControlUI& c, Text v) { setIf(c, &CControlUI::SetEnabled, parseBool(v)); }},
        {u"visible",
         [](CControlUI& c, Text v) { setIf(c, &CControlUI::SetVisible, parseBool(v)); }},
        {u"tabstop", [](CControlUI& c, Text v) { assignIf(c.m_tabStop, parseBool(v)); }},
        {u"link", [](CControlUI& c, Text v) { assignIf(c.m_isLink, parseBool(v)); }},
        {u"mouse", [](CControlUI& c, Text v) { assignIf(c.m_takesMouse, parseBool(v)); }},
    };
    return attributes;
}

CControlUI::~CControlUI() {
    if (m_manager != nullptr) {
        m_manager->forget(*this);
    }
}

void* CControlUI::GetInterface(std::u16string_view name) {
    return name == u"Control" ? this : nullptr;
}

void CControlUI::SetText(std::u16string_view text) {
    if (m_text != text) {
        m_text = text;
        Invalidate();
        accessibleChanged(platform::AccessibleChange::name);
    }
}

void CControlUI::SetLabel(std::u16string_view text) {
    if (m_label != text) {
        m_label = text;
        accessibleChanged(platform::AccessibleChange::name);
    }
}

bool CControlUI::IsEnabled() const {
    return m_enabled && (m_parent == nullptr || m_parent->IsEnabled());
}

void CControlUI::SetEnabled(bool enabled) {
    if (m_enabled == enabled) {
        return;
    }
    m_enabled = enabled;
    if (!enabled && m_manager != nullptr) {
        m_manager->leaveInput(*this);
    }
    Invalidate();
    accessibleChanged(platform::AccessibleChange::state);
}

bool CControlUI::IsVisible() const {
    return m_visible && (m_parent == nullptr || m_parent->IsVisible());
}

void CControlUI::SetVisible(bool visible) {
    if (m_visible == visible) {
        return;
    }
    Invalidate();
    m_visible = visible;
    if (!visible && m_manager != nullptr) {
        m_manager->leaveInput(*this);
    }
    NeedUpdate();
    accessibleChanged(platform::AccessibleChange::state);
}

bool CControlUI::IsFocused() const {
    return m_manager != nullptr && m_manager->GetFocus() == this;
}

void CControlUI::SetFixedWidth(int width) {
    m_fixed.width = std::clamp(width, 0, kMaxLayoutNumber);
    NeedUpdate();
}

void CControlUI::SetFixedHeight(int height) {
    m_fixed.height = std::clamp(height, 0, kMaxLayoutNumber);
    NeedUpdate();
}

void CControlUI::SetMinWidth(int width) {
    m_min.width = std::clamp(width, 0, kMaxLayoutNumber);
    NeedUpdate();
}

void CControlUI::SetMinHeight(int height) {
    m_min.height = std::clamp(height, 0, kMaxLayoutNumber);
    NeedUpdate();
}

void CControlUI::SetMaxWidth(int width) {
    m_max.width = std::clamp(width, 0, kMaxLayoutNumber);
    NeedUpdate();
}

void CControlUI::SetMaxHeight(int height) {
    m_max.height = std::clamp(height, 0, kMaxLayoutNumber);
    NeedUpdate();
}

void CControlUI::SetPadding(const Rect& padding) {
    m_padding = padding;
    NeedUpdate();
}

void CControlUI::SetPlace(const Rect& place) {
    m_place = place;
    NeedUpdate();
}

void CControlUI::SetPos(const Rect& pos) {
    if (m_pos != pos) {
        Invalidate();
        m_pos = pos;
        Invalidate();
    }
}

platform::Size CControlUI::EstimateSize(Size /*available*/) const {
    return m_fixed;
}

platform::Size CControlUI::withImageHeight(Size size, const std::u16string& attribute) const {
    if (size.height == 0 && m_manager != nullptr) {
        const SkinImage* image = m_manager->look().GetImage(attribute);
        size.height = image != nullptr ? image->bitmap->size().height : 0;
    }
    return size;
}

platform::Size CControlUI::limited(Size size) const {
    const auto limit = [](int value, int lowest, int highest) {
        value = highest > 0 ? std::min(value, highest) : value;
        return std::max({value, lowest, 0});
    };
    return {limit(size.width, m_min.width, m_max.width),
            limit(size.height, m_min.height, m_max.height)};
}

void CControlUI::Invalidate() {
    if (m_manager != nullptr && m_visible) {
        m_manager->Invalidate(m_pos);
    } else if (m_manager == nullptr && m_parent != nullptr) {
        m_parent->Invalidate(); // an item of a combo, which shows in its box
    }
}

void CControlUI::NeedUpdate() {
    if (m_manager != nullptr) {
        m_manager->NeedUpdate();
        Invalidate();
        for (CControlUI* around = m_parent; around != nullptr; around = around->m_parent) {
            around->childNeedsUpdate();
        }
    }
}

bool CControlUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (!Attributes::table().apply(*this, name, value)) {
        return false;
    }
    NeedUpdate();
    return true;
}

bool CControlUI::DoEvent(const TEventUI& /*event*/) {
    return false;
}

void CControlUI::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    paintBackground(canvas);
    paintStatus(canvas);
    paintIcon(canvas);
    paintText(canvas);
    paintBorder(canvas);
}

void CControlUI::SetIcon(std::u16string_view name) {
    m_icon.name = name;
    Invalidate();
}

IconState CControlUI::iconState() const {
    return IsEnabled() ? IconState::normal : IconState::disabled;
}

void CControlUI::paintIcon(platform::Canvas& canvas) {
    if (m_icon.name.empty() || m_manager == nullptr) {
        return;
    }
    m_manager->look().icons().draw(canvas, m_pos, m_icon, iconState(), iconPlace());
}

void CControlUI::paintBackground(platform::Canvas& canvas) {
    const platform::Color ground = paletteColor(m_backColor);
    if (platform::alphaOf(ground) != 0) {
        if (m_backRadius > 0) {
            fillRoundBox(canvas, m_pos, m_backRadius, ground);
        } else {
            canvas.fillRect(m_pos, ground);
        }
    }
    drawImage(canvas, m_backImage);
    drawImage(canvas, m_foreImage);
}

void CControlUI::SetBorderSize(const Rect& size) {
    if (m_borderSize != size) {
        m_borderSize = size;
        Invalidate();
    }
}

void CControlUI::paintBorder(platform::Canvas& canvas) {
    const platform::Color edge = paletteColor(m_borderColor);
    if (platform::alphaOf(edge) == 0 || m_borderSize == Rect{}) {
        return;
    }
    if (m_backRadius > 0) {
        frameRoundBox(canvas, m_pos, m_backRadius, m_borderSize.left, edge);
    } else {
        canvas.fillFrame(m_pos, m_borderSize, edge);
    }
}

platform::Color CControlUI::paletteColor(const SkinColor& color) const {
    static const Palette usual;
    return color.in(m_manager != nullptr ? m_manager->look().palette() : usual);
}

std::u16string CControlUI::toolTipAt(Point /*point*/) const {
    return m_toolTip;
}

CControlUI* CControlUI::FindSubControl(std::u16string_view name) const {
    for (int i = 0; i < childCount(); ++i) {
        CControlUI* child = childAt(i);
        if (child->GetName() == name) {
            return child;
        }
        if (CControlUI* found = child->FindSubControl(name)) {
            return found;
        }
    }
    return nullptr;
}

CControlUI* CControlUI::childBeside(const CControlUI* child, bool backward) const {
    const int count = childCount();
    int at = backward ? count : -1;
    for (int i = 0; child != nullptr && i < count; ++i) {
        if (childAt(i) == child) {
            at = i;
        }
    }
    at += backward ? -1 : 1;
    return at >= 0 && at < count ? childAt(at) : nullptr;
}

bool CControlUI::isInside(const CControlUI* ancestor) const {
    for (const CControlUI* control = this; control != nullptr; control = control->m_parent) {
        if (control == ancestor) {
            return true;
        }
    }
    return false;
}

platform::Rect CControlUI::visibleArea(const Rect& rect) const {
    Rect area = rect;
    for (const CControlUI* around = m_parent; around != nullptr; around = around->m_parent) {
        area = area.intersected(around->childClip());
    }
    return area;
}

CControlUI* CControlUI::controlAt(Point point, Meeting kind) {
    return m_visible && m_pos.contains(point) && meets(point, kind) ? this : nullptr;
}

bool CControlUI::meets(Point point, Meeting kind) const {
    return m_takesMouse || (kind == Meeting::tip && !toolTipAt(point).empty());
}

void CControlUI::reveal(CControlUI& descendant) {
    if (m_parent != nullptr) {
        m_parent->reveal(descendant);
    }
}

void CControlUI::attach(CPaintManagerUI* manager, CControlUI* parent) {
    if (m_manager != nullptr && m_manager != manager) {
        forgetInput();
        m_manager->forget(*this);
    }
    m_manager = manager;
    m_parent = parent;
}

bool CControlUI::drawImage(platform::Canvas& canvas, const std::u16string& attribute) const {
    if (m_manager == nullptr || attribute.empty()) {
        return false;
    }
    const SkinImage* image = m_manager->look().GetImage(attribute);
    if (image == nullptr) {
        return false;
    }
    image->draw(canvas, image->placeIn(m_pos));
    return true;
}

bool CControlUI::notify(std::u16string_view type, int wParam) {
    if (m_manager != nullptr) {
        m_manager->SendNotify(*this, type, wParam);
    }
    return m_manager != nullptr;
}

} // namespace toolkit
