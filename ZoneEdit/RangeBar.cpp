#include "ZoneEdit/RangeBar.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "ZoneEdit/ZoneEditControls.h"
#include "core/Texts.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/branch_editor/ClipCard.h"
#include "video/CVideoUI.h"

namespace zoneedit {
namespace {

using platform::Rect;

constexpr int kBandWidth = 1880; ///< of the window, from which on the band has room
constexpr platform::Size kPanel{836, 41};
constexpr int kGap = 8; ///< below the bar, and above its buttons
constexpr int kHeight = 25;

struct Part {
    std::u16string_view name;
    int inBar;  ///< from the bar's left edge
    int inBand; ///< from the window's left edge
    int row;    ///< of the band, from the upper edge of what it holds
    int width;
};

/// Of what the band holds, from the window's left and lower edge.
constexpr platform::Point kBand{940, 68};
constexpr platform::Size kBandSize{572, 60};
constexpr int kUpper = 0;
constexpr int kLower = 35;
constexpr Part kParts[] = {{u"ButtonInterpolate", 148, 940, kLower, 120},
                           {u"ButtonInterpolateMenu", 267, 1059, kLower, 28},
                           {u"ButtonFollow", 303, 1095, kLower, 92},
                           {u"ButtonCopyShape", 403, 1408, kUpper, 28},
                           {u"ButtonPasteShape", 435, 1440, kUpper, 28},
                           {u"ButtonApplyShape", 471, 1195, kLower, 132},
                           {u"ButtonRangeActive", 611, 1335, kLower, 72},
                           {u"ButtonRangeInactive", 687, 1411, kLower, 96},
                           {u"ButtonClearRange", 800, 1480, kUpper, 28}};
constexpr Part kLabel{u"LabelRange", 12, 1136, kUpper, 132};
constexpr int kLabelInBand = 176;

/// The band has fields for both ends, and room for the time.
std::u16string textOf(const FrameSpan& span, bool isInBand, double framesPerSecond) {
    const auto count = static_cast<std::size_t>(span.count());
    return isInBand ? core::tr("FrameSpanTime|{0} frame, {1}|{0} frames, {1}"_trn, count,
                               ui::lengthText(span.count() / framesPerSecond))
                    : core::tr("FrameSpan|{1} to {2}, {0} frame|{1} to {2}, {0} frames"_trn, count,
                               span.first, span.last);
}

} // namespace

RangeBar::RangeBar(ui::Controls controls, const EditedVideo& video, FrameSelection& selection)
    : m_controls(controls), m_video(video), m_selection(selection),
      m_changes(selection.observe([this] { show(); })) {}

void RangeBar::show() {
    const auto span = m_selection.span();
    const platform::Size window = m_controls.manager().GetWindowSize();
    const bool isInBand = window.width >= kBandWidth;
    const Rect picture = m_video.control() != nullptr ? m_video.control()->GetPos() : Rect();
    toolkit::CControlUI* panel = m_controls.find(kRangePanel);
    if (panel == nullptr) {
        return;
    }
    panel->SetPlace(
        isInBand ? Rect::at(kBand.x, window.height - kBand.y, kBandSize.width, kBandSize.height)
                 : Rect::at(picture.left + (picture.width() - kPanel.width) / 2,
                            picture.bottom - kGap - kPanel.height, kPanel.width, kPanel.height));
    panel->SetAttribute(u"bkcolor", isInBand ? u"#00000000" : u"window");
    panel->SetAttribute(u"bordersize", isInBand ? u"0" : u"1");
    // Both bars stand in the same place over the picture.
    const toolkit::CControlUI* follow = m_controls.find(kFollowPanel);
    const bool isCovered = !isInBand && follow != nullptr && follow->IsVisible();
    panel->SetVisible(span.has_value() && !isCovered);
    const auto put = [&](const Part& part, int widthInBand) {
        if (toolkit::CControlUI* control = m_controls.find(part.name)) {
            control->SetPlace(isInBand
                                  ? Rect::at(part.inBand - kBand.x, part.row, widthInBand, kHeight)
                                  : Rect::at(part.inBar, kGap, part.width, kHeight));
        }
    };
    for (const Part& part : kParts) {
        put(part, part.width);
    }
    put(kLabel, kLabelInBand);
    if (span) {
        m_controls.setText(kLabel.name, textOf(*span, isInBand, m_video.framesPerSecond()));
    }
}

} // namespace zoneedit
