// The bar with what can be done to the marked range: over the lower edge of the picture, in the
// band below where that is wide enough. Part of the zone editor. UI thread only.
#pragma once

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/FrameSelection.h"
#include "edit/Observers.h"
#include "ui/Controls.h"

namespace zoneedit {

class RangeBar {
public:
    /// All outlive it.
    RangeBar(ui::Controls controls, const EditedVideo& video, FrameSelection& selection);

    /// Shows the range as it is now, where there is room for it now.
    void show();

private:
    ui::Controls m_controls;
    const EditedVideo& m_video;
    FrameSelection& m_selection;
    edit::Subscription m_changes;
};

} // namespace zoneedit
