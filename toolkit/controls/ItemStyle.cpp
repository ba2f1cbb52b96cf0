#include "toolkit/controls/ItemStyle.h"

#include <algorithm>

#include "platform/Color.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/SkinImage.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {

bool ItemStyle::apply(std::u16string_view name, std::u16string_view value) {
    using Text = std::u16string_view;
    static const AttributeTable<ItemStyle> attributes{
        {u"itembkimage", [](ItemStyle& s, Text v) { s.backImage = v; }},
        {u"itemhotimage", [](ItemStyle& s, Text v) { s.hotImage = v; }},
        {u"itemselectedimage", [](ItemStyle& s, Text v) { s.selectedImage = v; }},
        {u"itemdisabledimage", [](ItemStyle& s, Text v) { s.disabledImage = v; }},
        {u"itembkcolor", [](ItemStyle& s, Text v) { assignIf(s.backColor, parseSkinColor(v)); }},
        {u"itemhotbkcolor",
         [](ItemStyle& s, Text v) { assignIf(s.hotBackColor, parseSkinColor(v)); }},
        {u"itemselectedbkcolor",
         [](ItemStyle& s, Text v) { assignIf(s.selectedBackColor, parseSkinColor(v)); }},
        {u"itemdisabledbkcolor",
         [](ItemStyle& s, Text v) { assignIf(s.disabledBackColor, parseSkinColor(v)); }},
        {u"itemtextcolor", [](ItemStyle& s, Text v) { assignIf(s.textColor, parseSkinColor(v)); }},
        {u"itemhottextcolor",
         [](ItemStyle& s, Text v) { assignIf(s.hotTextColor, parseSkinColor(v)); }},
        {u"itemselectedtextcolor",
         [](ItemStyle& s, Text v) { assignIf(s.selectedTextColor, parseSkinColor(v)); }},
        {u"itemdisabledtextcolor",
         [](ItemStyle& s, Text v) { assignIf(s.disabledTextColor, parseSkinColor(v)); }},
        {u"itemlinecolor", [](ItemStyle& s, Text v) { assignIf(s.lineColor, parseSkinColor(v)); }},
        {u"itemselectedlinecolor",
         [](ItemStyle& s, Text v) { assignIf(s.selectedLineColor, parseSkinColor(v)); }},
        {u"itemtextpadding", [](ItemStyle& s, Text v) { assignIf(s.textPadding, parseRect(v)); }},
        {u"itemfont", [](ItemStyle& s, Text v) { assignIf(s.font, parseInt(v)); }},
        {u"itemheight",
         [](ItemStyle& s, Text v) {
             s.height = std::clamp(parseInt(v).value_or(s.height), 1, kMaxHeight);
         }},
    };
    return attributes.apply(*this, name, value);
}

SkinColor ItemStyle::textColorFor(const ItemState& state) const {
    if (!state.enabled) {
        return disabledTextColor;
    }
    return state.selected ? selectedTextColor : state.hot ? hotTextColor : textColor;
}

void ItemStyle::paintBackground(platform::Canvas& canvas, CPaintManagerUI& manager,
                                const platform::Rect& rect, const ItemState& state) const {
    const bool selected = state.enabled && state.selected;
    const bool hot = state.enabled && !selected && state.hot;
    const platform::Color fill = manager.look().color(!state.enabled ? disabledBackColor
                                                      : selected     ? selectedBackColor
                                                      : hot          ? hotBackColor
                                                                     : backColor);
    if (platform::alphaOf(fill) != 0) {
        canvas.fillRect(rect, fill);
    }
    const std::u16string& attribute = !state.enabled ? disabledImage
                                      : selected     ? selectedImage
                                      : hot          ? hotImage
                                                     : backImage;
    if (const SkinImage* image = manager.look().GetImage(attribute)) {
        image->draw(canvas, image->placeIn(rect));
    }
    const platform::Color line =
        manager.look().color(selected && selectedLineColor.isSet() ? selectedLineColor : lineColor);
    if (platform::alphaOf(line) != 0) {
        canvas.fillRect({rect.left, rect.bottom - 1, rect.right, rect.bottom}, line);
    }
}

void ItemStyle::paintText(platform::Canvas& canvas, CPaintManagerUI& manager,
                          const platform::Rect& rect, std::u16string_view text,
                          const ItemState& state) const {
    const platform::Rect box{rect.left + textPadding.left, rect.top + textPadding.top,
                             rect.right - textPadding.right, rect.bottom - textPadding.bottom};
    TextLook look;
    look.font = manager.look().GetFont(font);
    look.color = manager.look().color(textColorFor(state));
    paintTextLine(canvas, manager.fonts(), text, box, look);
}

} // namespace toolkit
