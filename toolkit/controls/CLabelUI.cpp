#include "toolkit/controls/CLabelUI.h"

#include <algorithm>
#include <cstddef>

#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {

namespace {

constexpr int kMostLines = 64;

} // namespace

struct CLabelUI::Attributes {
    static const AttributeTable<CLabelUI>& table();
};

const AttributeTable<CLabelUI>& CLabelUI::Attributes::table() {
    using Text = std::u16string_view;
    static const AttributeTable<CLabelUI> attributes{
        {u"font", [](CLabelUI& c, Text v) { assignIf(c.m_font, parseInt(v)); }},
        {u"textcolor", [](CLabelUI& c, Text v) { assignIf(c.m_textColor, parseSkinColor(v)); }},
        {u"disabledtextcolor",
         [](CLabelUI& c, Text v) { assignIf(c.m_disabledTextColor, parseSkinColor(v)); }},
        {u"textpadding", [](CLabelUI& c, Text v) { assignIf(c.m_textPadding, parseRect(v)); }},
        {u"endellipsis", [](CLabelUI& c, Text v) { assignIf(c.m_endEllipsis, parseBool(v)); }},
        {u"lines", [](CLabelUI& c,
                      Text v) { c.m_lines = std::clamp(parseInt(v).value_or(1), 1, kMostLines); }},
        {u"middle", [](CLabelUI& c, Text v) { assignIf(c.m_isInMiddle, parseBool(v)); }},
        {u"besidetext", [](CLabelUI& c, Text v) { assignIf(c.m_besideText, parseInt(v)); }},
        {u"align",
         [](CLabelUI& c, Text v) {
             const Text word = trimmed(v);
             if (word == u"left") {
                 c.m_align = platform::TextAlign::left;
             } else if (word == u"center") {
                 c.m_align = platform::TextAlign::center;
             } else if (word == u"right") {
                 c.m_align = platform::TextAlign::right;
             }
         }},
    };
    return attributes;
}

void* CLabelUI::GetInterface(std::u16string_view name) {
    return name == u"Label" ? this : CControlUI::GetInterface(name);
}

void CLabelUI::SetText(std::u16string_view text) {
    CControlUI::SetText(text);
    if (m_besideText) {
        NeedUpdate();
    }
}

platform::Size CLabelUI::EstimateSize(Size available) const {
    constexpr int kStep = 4; // so that a change of one letter seldom moves the neighbours
    Size size = CControlUI::EstimateSize(available);
    if (m_besideText && GetManager() != nullptr) {
        size.width =
            std::max(size.width, (textWidth() + *m_besideText + kStep - 1) / kStep * kStep);
    }
    return size;
}

int CLabelUI::textWidth() const {
    const CPaintManagerUI* manager = GetManager();
    return manager != nullptr
               ? manager->fonts().measure(GetText(), manager->look().GetFont(m_font)).width
               : 0;
}

void CLabelUI::SetFont(int font) {
    m_font = font;
    Invalidate();
}

void CLabelUI::SetTextPadding(const Rect& padding) {
    m_textPadding = padding;
    Invalidate();
}

bool CLabelUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (!Attributes::table().apply(*this, name, value)) {
        return CControlUI::SetAttribute(name, value);
    }
    Invalidate();
    return true;
}

platform::Rect CLabelUI::textRect() const {
    const Rect& pos = GetPos();
    return {pos.left + m_textPadding.left, pos.top + m_textPadding.top,
            pos.right - m_textPadding.right, pos.bottom - m_textPadding.bottom};
}

SkinColor CLabelUI::currentTextColor() const {
    return IsEnabled() ? m_textColor : m_disabledTextColor;
}

void CLabelUI::paintText(platform::Canvas& canvas) {
    const CPaintManagerUI& manager = *GetManager();
    const Rect box = textRect();
    const int height = box.height() / m_lines;
    const std::vector<std::u16string> lines = textLines();
    int top = box.top;
    if (m_isInMiddle) {
        top += (box.height() - height * static_cast<int>(lines.size())) / 2;
    }
    for (const std::u16string& line : lines) {
        paintTextLine(canvas, manager.fonts(), line, {box.left, top, box.right, top + height},
                      {manager.look().GetFont(m_font), paletteColor(currentTextColor()), m_align,
                       m_endEllipsis});
        top += height;
    }
}

std::vector<std::u16string> CLabelUI::textLines() const {
    const CPaintManagerUI& manager = *GetManager();
    return brokenText(GetText(), textRect().width(), static_cast<std::size_t>(m_lines),
                      manager.look().GetFont(m_font), manager.fonts());
}

std::u16string CLabelUI::toolTipAt(Point /*point*/) const {
    if (!GetToolTip().empty() || GetManager() == nullptr) {
        return GetToolTip();
    }
    const CPaintManagerUI& manager = *GetManager();
    const std::vector<std::u16string> lines = textLines();
    const bool fits = std::all_of(lines.begin(), lines.end(), [&](const std::u16string& line) {
        return fitsInto(textRect().width(), line, manager.look().GetFont(m_font), manager.fonts());
    });
    return fits ? std::u16string() : GetText();
}

platform::AccessibleRole CLabelUI::accessibleRole() const {
    return platform::AccessibleRole::label;
}

std::u16string CLabelUI::accessibleName() const {
    std::u16string text = GetText();
    return text.empty() ? givenName() : text;
}

} // namespace toolkit
