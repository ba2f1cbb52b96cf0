// The names of the preview's controls, as the branch editor's layout gives them.
#pragma once

#include <string_view>

namespace ui::branch_list {

inline constexpr std::u16string_view kVideoPreview = u"VideoPreview";
inline constexpr std::u16string_view kPreviewPlay = u"ButtonPreviewPlay";
inline constexpr std::u16string_view kPreviewTime = u"LabelPreviewTime";
inline constexpr std::u16string_view kPreviewSlider = u"SliderPreview";
inline constexpr std::u16string_view kPreviewSound = u"CheckSound";
inline constexpr std::u16string_view kPreviewZones = u"CheckShowZones";
inline constexpr std::u16string_view kPreviewChoices = u"ListChoices";
inline constexpr std::u16string_view kPreviewPath = u"ListPath";
inline constexpr std::u16string_view kPreviewNote = u"LabelApproximate";
inline constexpr std::u16string_view kPreviewStop = u"ButtonPreviewStop";

} // namespace ui::branch_list
