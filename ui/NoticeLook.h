// How a bar with a notice looks: the strip of the branch editor and the bar of the zone editor. UI
// thread only.
#pragma once

#include <string_view>

#include "toolkit/controls/CControlUI.h"

namespace ui {

struct NoticeLook {
    std::u16string_view fill;
    std::u16string_view edge;
    std::u16string_view text;
    std::u16string_view icon;
    std::u16string_view tint;
};
/// That of the layouts.
inline constexpr NoticeLook kNoteLook{u"hot", u"accent", u"ink", u"Note", u"accent"};
inline constexpr NoticeLook kWarningLook{u"warnfill", u"warnedge", u"warn", u"Warning", u"warning"};
inline constexpr NoticeLook kErrorLook{kWarningLook.fill, kWarningLook.edge, kWarningLook.text,
                                       u"Error", u"danger"};

/// For a look that changes: each call lays out the window again. The text keeps its colour.
inline void apply(toolkit::CControlUI* panel, toolkit::CControlUI* sign, const NoticeLook& look) {
    if (panel != nullptr) {
        panel->SetAttribute(u"bkcolor", look.fill);
        panel->SetAttribute(u"bordercolor", look.edge);
    }
    if (sign != nullptr) {
        sign->SetAttribute(u"icon", look.icon);
        sign->SetAttribute(u"icontint", look.tint);
    }
}

} // namespace ui
