// The two fields of the marked range, and the commands that begin and end it. Part of the zone
// editor.
#pragma once

#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/FrameSelection.h"
#include "edit/Observers.h"
#include "ui/Controls.h"

namespace zoneedit {

class HeaderPresenter;

class RangePresenter {
public:
    /// All outlive it.
    RangePresenter(ui::Controls controls, EditedVideo& video, FrameSelection& selection,
                   HeaderPresenter& header);

    // At the frame on show.
    void begin() { m_selection.beginAt(m_video.frame()); }
    void end() { m_selection.endAt(m_video.frame()); }
    /// The author left a field. False when it is none of the two.
    bool typed(std::u16string_view field);
    /// Gives the field with the focus its number back. False when it has it.
    bool restoreText();

private:
    void show();

    ui::Controls m_controls;
    EditedVideo& m_video;
    FrameSelection& m_selection;
    HeaderPresenter& m_header;
    edit::Subscription m_changes;
};

} // namespace zoneedit
