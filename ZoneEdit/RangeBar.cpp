#include "ZoneEdit/RangeBar.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "ZoneEdit/ZoneEditControls.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/FigureTexts.h"
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
    int inBar;               ///< from the bar's left edge, unless the part before it needs the room
    int inBand;              ///< from the window's left edge, as well
    int row;                 ///< of the band
    int width;               ///< at least
    int gap;                 ///< to the part before it, at least
    bool hasChevron = false; ///< at its right end
};

/// Of what the band holds, from the window's left and lower edge.
constexpr platform::Point kBand{940, 68};
constexpr platform::Size kBandSize{572, 60};
constexpr int kBesideBand = 348; ///< right of it, for the frame steps
constexpr int kRowHeight = 35;
constexpr int kRows = 2;
constexpr int kLabelInBand = 176;
constexpr int kBesideChevron = 24;
constexpr std::u16string_view kLabel = u"LabelRange";
constexpr Part kParts[] = {{kLabel, 12, 1136, 0, 132, 0},
                           {u"ButtonInterpolate", 148, 940, 1, 120, 4},
                           {u"ButtonInterpolateMenu", 267, 1059, 1, 28, -1},
                           {u"ButtonFollow", 303, 1095, 1, 92, 8},
                           {u"ButtonCopyShape", 403, 1408, 0, 28, 8},
                           {u"ButtonPasteShape", 435, 1440, 0, 28, 4},
                           {u"ButtonApplyShape", 471, 1195, 1, 132, 8, true},
                           {u"ButtonRangeActive", 611, 1335, 1, 72, 8},
                           {u"ButtonRangeInactive", 687, 1411, 1, 96, 4},
                           {u"ButtonClearRange", 800, 1480, 0, 28, 8}};

/// Where the parts stand, from the panel's left and upper edge, each as wide as its text needs.
struct Places {
    std::array<Rect, std::size(kParts)> parts;
    int right = 0; ///< the last one's
};

Places placesOf(const ui::Controls& controls, bool isInBand) {
    Places places;
    std::array<int, kRows> ends{}; // of what stands in each row of the band
    for (std::size_t i = 0; i < std::size(kParts); ++i) {
        const Part& part = kParts[i];
        const toolkit::CControlUI* control = controls.find(part.name);
        const int least = isInBand && part.name == kLabel ? kLabelInBand : part.width;
        const int width =
            control != nullptr ? std::max(least, control->EstimateSize({}).width) : least;
        int& end = ends.at(isInBand ? static_cast<std::size_t>(part.row) : 0);
        const int left =
            std::max(isInBand ? part.inBand - kBand.x : part.inBar, end > 0 ? end + part.gap : 0);
        places.parts.at(i) =
            Rect::at(left, isInBand ? part.row * kRowHeight : kGap, width, kHeight);
        end = left + width;
        places.right = std::max(places.right, end);
    }
    return places;
}

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
    toolkit::CControlUI* panel = m_controls.find(kRangePanel);
    if (panel == nullptr) {
        return;
    }
    const auto span = m_selection.span();
    const auto setText = [&](bool isInBand) {
        if (span) {
            m_controls.setText(kLabel, textOf(*span, isInBand, m_video.framesPerSecond()));
        }
    };
    const platform::Size window = m_controls.manager().GetWindowSize();
    setText(true);
    Places places = placesOf(m_controls, true);
    const bool isInBand =
        window.width >= kBandWidth && kBand.x + places.right <= window.width - kBesideBand;
    if (isInBand) {
        panel->SetPlace(Rect::at(kBand.x, window.height - kBand.y,
                                 std::max(kBandSize.width, places.right), kBandSize.height));
    } else {
        setText(false);
        places = placesOf(m_controls, false);
        const Rect picture = m_video.control() != nullptr ? m_video.control()->GetPos() : Rect();
        const int width = std::max(kPanel.width, places.right + kGap);
        panel->SetPlace(Rect::at(picture.left + (picture.width() - width) / 2,
                                 picture.bottom - kGap - kPanel.height, width, kPanel.height));
    }
    panel->SetAttribute(u"bkcolor", isInBand ? u"#00000000" : u"window");
    panel->SetAttribute(u"bordersize", isInBand ? u"0" : u"1");
    // Both bars stand in the same place over the picture.
    const toolkit::CControlUI* follow = m_controls.find(kFollowPanel);
    const bool isCovered = !isInBand && follow != nullptr && follow->IsVisible();
    panel->SetVisible(span.has_value() && !isCovered);
    for (std::size_t i = 0; i < std::size(kParts); ++i) {
        if (toolkit::CControlUI* control = m_controls.find(kParts[i].name)) {
            control->SetPlace(places.parts.at(i));
            if (kParts[i].hasChevron) {
                const int left = places.parts.at(i).width() - kBesideChevron;
                control->SetAttribute(u"iconpos", core::displayText(std::to_string(left) + ",4"));
            }
        }
    }
}

} // namespace zoneedit
