// How the items of a combo or list look: the attributes whose names begin with "item".
#pragma once

#include <string>
#include <string_view>

#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/Geometry.h"

namespace toolkit {

class CPaintManagerUI;

struct ItemState {
    bool enabled = true;
    bool selected = false;
    bool hot = false;
};

struct ItemStyle {
    std::u16string backImage;
    std::u16string hotImage;
    std::u16string selectedImage;
    std::u16string disabledImage;
    platform::Color backColor = 0; ///< alpha 0: nothing is filled
    platform::Color hotBackColor = 0xFFE9F5FF;
    platform::Color selectedBackColor = 0xFFC1E3FF;
    platform::Color disabledBackColor = 0;
    platform::Color textColor = 0xFF000000;
    platform::Color hotTextColor = 0xFF000000;
    platform::Color selectedTextColor = 0xFF000000;
    platform::Color disabledTextColor = 0xFFCCCCCC;
    platform::Color lineColor = 0; ///< one pixel along the item's bottom
    platform::Color selectedLineColor = 0;
    platform::Rect textPadding;
    int font = 0;
    int height = 25;

    /// Sets the attribute `name`; false when it is none of an item's.
    bool apply(std::u16string_view name, std::u16string_view value);
    [[nodiscard]] platform::Color textColorFor(const ItemState& state) const;
    /// Fill, image and line of one item.
    void paintBackground(platform::Canvas& canvas, CPaintManagerUI& manager,
                         const platform::Rect& rect, const ItemState& state) const;
    /// The text of one item, cut with an ellipsis.
    void paintText(platform::Canvas& canvas, CPaintManagerUI& manager, const platform::Rect& rect,
                   std::u16string_view text, const ItemState& state) const;
};

} // namespace toolkit
