// An image attribute and how it is drawn: file='name' corner='l,t,r,b' dest='l,t,r,b'.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Bitmap.h"
#include "platform/Canvas.h"
#include "platform/Geometry.h"

namespace toolkit {

class IconSet;

/// The parsed text of an image attribute. A value without "=" is the file name alone.
struct ImageAttribute {
    std::u16string file;                ///< inside the skin folder; empty: no image
    platform::Rect corner;              ///< widths of the four edges that do not stretch, >= 0
    std::optional<platform::Rect> dest; ///< relative to the control's top-left; may lie outside it

    /// Blanks between and around keys and values are tolerated, unknown keys ignored.
    static ImageAttribute parse(std::u16string_view text);
};

struct SkinImage {
    std::shared_ptr<const platform::Bitmap> bitmap; ///< never empty
    platform::Rect corner;
    std::optional<platform::Rect> dest;
    std::u16string file{};
    const IconSet* scales = nullptr; ///< has the file for other scales; null: none

    /// The part of a control at `pos` that the image covers: all of it, or its `dest`.
    [[nodiscard]] platform::Rect placeIn(const platform::Rect& pos) const;
    /// Draws over `rect`: corners as they are, edges stretched along, the middle stretched.
    /// Where `rect` is smaller than two corners they are cut down in proportion.
    void draw(platform::Canvas& canvas, const platform::Rect& rect) const;
};

} // namespace toolkit
