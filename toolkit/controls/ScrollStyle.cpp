#include "toolkit/controls/ScrollStyle.h"

#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/SkinImage.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {

bool ScrollStyle::apply(std::u16string_view name, std::u16string_view value) {
    using Text = std::u16string_view;
    static const AttributeTable<ScrollStyle> attributes{
        {u"width", [](ScrollStyle& s, Text v) { assignIf(s.width, parseInt(v)); }},
        {u"thumbwidth", [](ScrollStyle& s, Text v) { assignIf(s.thumbWidth, parseInt(v)); }},
        {u"thumbmargin", [](ScrollStyle& s, Text v) { assignIf(s.thumbMargin, parseInt(v)); }},
        {u"trackcolor", [](ScrollStyle& s, Text v) { assignIf(s.trackColor, parseSkinColor(v)); }},
        {u"linecolor", [](ScrollStyle& s, Text v) { assignIf(s.lineColor, parseSkinColor(v)); }},
        {u"thumbcolor", [](ScrollStyle& s, Text v) { assignIf(s.thumbColor, parseSkinColor(v)); }},
        {u"thumbimage", [](ScrollStyle& s, Text v) { s.thumbImage = v; }},
        {u"thumbhotimage", [](ScrollStyle& s, Text v) { s.thumbHotImage = v; }},
        {u"thumbpushedimage", [](ScrollStyle& s, Text v) { s.thumbPushedImage = v; }},
    };
    return attributes.apply(*this, name, value);
}

void ScrollStyle::paint(platform::Canvas& canvas, CPaintManagerUI& manager,
                        const platform::Rect& track, const platform::Rect& thumb, bool hot,
                        bool pushed) const {
    const Palette& colors = manager.look().palette();
    canvas.fillRect(track, trackColor.in(colors));
    canvas.fillRect({track.left, track.top, track.left + 1, track.bottom}, lineColor.in(colors));
    const platform::Rect bar{track.right - thumbMargin - thumbWidth, thumb.top,
                             track.right - thumbMargin, thumb.bottom};
    const SkinImage* image = manager.look().GetImage(pushed ? thumbPushedImage
                                                     : hot  ? thumbHotImage
                                                            : thumbImage);
    if (image == nullptr) {
        image = manager.look().GetImage(thumbImage);
    }
    if (image != nullptr) {
        image->draw(canvas, bar);
    } else {
        canvas.fillRect(bar, thumbColor.in(colors));
    }
}

} // namespace toolkit
