// How a vertical scroll bar looks, in lists and in drop lists.
#pragma once

#include <string>
#include <string_view>

#include "platform/Canvas.h"
#include "platform/Geometry.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class CPaintManagerUI;

struct ScrollStyle {
    int width = 14;
    int thumbWidth = 8;
    int thumbMargin = 3; ///< between the thumb and the right edge
    SkinColor trackColor = Tone::window;
    SkinColor lineColor = Tone::line;
    SkinColor thumbColor = Tone::edge; ///< where no image is given
    std::u16string thumbImage;
    std::u16string thumbHotImage;
    std::u16string thumbPushedImage;

    /// Sets the attribute `name`; false when it is none of a scroll bar's.
    bool apply(std::u16string_view name, std::u16string_view value);
    /// `thumb`: the thumb's rows across the whole track width.
    void paint(platform::Canvas& canvas, CPaintManagerUI& manager, const platform::Rect& track,
               const platform::Rect& thumb, bool hot, bool pushed) const;
};

} // namespace toolkit
