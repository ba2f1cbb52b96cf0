// Fills the timeline and does what the author does there: goes to frames, jumps to keys, marks a
// range. Part of the zone editor.
#pragma once

#include <optional>
#include <vector>

#include "ZoneEdit/EditedVideo.h"
#include "ZoneEdit/FrameSelection.h"
#include "ZoneEdit/Timeline.h"
#include "edit/Observers.h"
#include "ui/Controls.h"
#include "zone/SessionKeys.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class FramesPresenter;

class TimelinePresenter final : private Timeline::Listener {
public:
    /// All outlive it.
    TimelinePresenter(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                      zone::SessionKeys& keys, FrameSelection& selection, FramesPresenter& frames);
    ~TimelinePresenter() override;
    TimelinePresenter(const TimelinePresenter&) = delete;
    TimelinePresenter& operator=(const TimelinePresenter&) = delete;

    void showAll();
    /// Another frame is on show.
    void showFrame();
    /// Another zone was chosen.
    void showZone();
    /// Frames that something offers to change. Empty: none.
    void showOffered(const zone::FrameRange& frames);

    void first();
    void last();
    /// To the nearest key of the zone in that direction; nothing where there is none.
    void keyBefore();
    void nextKey();
    void fit();
    /// Takes back the drag that is going on. False when there is none.
    bool cancelDrag();

private:
    void frameWanted(int frame) override;
    void frameChosen() override;
    void steps(int frames) override;
    void rangeMarked(int one, int other) override;
    void rangeCleared() override;
    [[nodiscard]] const TimelineMarks& marks() override;

    void note(const std::vector<zone::ZoneChange>& changes);
    void invalidate();
    void showRange();
    [[nodiscard]] const zone::ShapeKeys& keys();
    void goTo(const std::optional<int>& frame);
    [[nodiscard]] Timeline* timeline() const;

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    zone::SessionKeys& m_keys;
    FrameSelection& m_selection;
    FramesPresenter& m_frames;
    edit::Subscription m_changes;
    edit::Subscription m_rangeChanges;
    TimelineMarks m_marks;
    bool m_isStale = true; ///< the marks are of another zone or older shapes
};

} // namespace zoneedit
