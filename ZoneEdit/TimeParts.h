// The parts of the zone editor that deal with time: the frame on show, playing, the timeline and
// the marked range. Makes them, binds their commands and hands events on to them. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/FrameSelection.h"
#include "ZoneEdit/FramesPresenter.h"
#include "ZoneEdit/PlayPresenter.h"
#include "ZoneEdit/RangePresenter.h"
#include "ZoneEdit/TimelinePresenter.h"
#include "platform/Event.h"
#include "platform/Gui.h"
#include "ui/Controls.h"
#include "zone/SessionKeys.h"
#include "zone/ZoneSession.h"

namespace ui {
class CommandSet;
}

namespace zoneedit {

class HeaderPresenter;

class TimeParts {
public:
    /// What they work with. All outlive them.
    struct Links {
        ui::Controls controls;
        EditedVideo& video;
        zone::ZoneSession& session;
        zone::SessionKeys& keys;
        HeaderPresenter& header;
        platform::Gui& gui;
        std::string path;                 ///< of the video
        std::function<void()> frameShown; ///< called whenever another frame is on show
    };
    TimeParts(ui::CommandSet& commands, const Links& links);

    void showAll();
    /// Another zone was chosen.
    void zoneShown() { m_timeline.showZone(); }
    /// Ends playing where a press on the picture acts on the frame that the author saw.
    void note(const platform::Event& event);
    /// True when the event was handled.
    bool handle(const platform::Event& event);
    /// The author left a text field. False when it is none of theirs.
    bool typed(std::u16string_view field);
    // For Esc. False when there was nothing to do.
    bool restoreText();
    bool cancelDrag() { return m_timeline.cancelDrag(); }
    bool stopPlaying();

    [[nodiscard]] FramesPresenter& frames() { return m_frames; }
    [[nodiscard]] TimelinePresenter& timeline() { return m_timeline; }
    [[nodiscard]] FrameSelection& selection() { return m_selection; }

private:
    void bind(ui::CommandSet& commands);

    ui::Controls m_controls;
    EditedVideo& m_video;
    FramesPresenter m_frames;
    FrameSelection m_selection;
    RangePresenter m_range;
    TimelinePresenter m_timeline;
    std::unique_ptr<PlayPresenter> m_player; ///< none without a video
};

} // namespace zoneedit
