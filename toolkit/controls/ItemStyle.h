// How the items of a combo or list look: the attributes whose names begin with "item".
#pragma once

#include <string>
#include <string_view>

#include "platform/Canvas.h"
#include "platform/Geometry.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class CPaintManagerUI;

struct ItemState {
    bool enabled = true;
    bool selected = false;
    bool hot = false;
};

struct ItemStyle {
    /// So that the heights of all items together can be counted.
    static constexpr int kMaxHeight = 1000;

    std::u16string backImage;
    std::u16string hotImage;
    std::u16string selectedImage;
    std::u16string disabledImage;
    SkinColor backColor; ///< alpha 0: nothing is filled
    SkinColor hotBackColor = Tone::hot;
    SkinColor selectedBackColor = Tone::selected;
    SkinColor disabledBackColor;
    SkinColor textColor = Tone::value;
    SkinColor hotTextColor = Tone::value;
    SkinColor selectedTextColor = Tone::value;
    SkinColor disabledTextColor = Tone::itemOff;
    SkinColor lineColor; ///< one pixel along the item's bottom
    SkinColor selectedLineColor;
    platform::Rect textPadding;
    int font = 0;
    int height = 25;

    /// Sets the attribute `name`; false when it is none of an item's.
    bool apply(std::u16string_view name, std::u16string_view value);
    [[nodiscard]] SkinColor textColorFor(const ItemState& state) const;
    /// Fill, image and line of one item.
    void paintBackground(platform::Canvas& canvas, CPaintManagerUI& manager,
                         const platform::Rect& rect, const ItemState& state) const;
    /// The text of one item, cut with an ellipsis.
    void paintText(platform::Canvas& canvas, CPaintManagerUI& manager, const platform::Rect& rect,
                   std::u16string_view text, const ItemState& state) const;
};

} // namespace toolkit
