// The two switches of the zone editor: whether the current zone is active on the frame on show, and
// whether changes are carried forward.
#pragma once

#include "ZoneEdit/EditedVideo.h"
#include "edit/Observers.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class FlagsPresenter {
public:
    /// All outlive it.
    FlagsPresenter(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session);

    void showAll();
    /// For another zone or frame.
    void showActive();
    /// The author pressed a switch. False when `sender` is neither.
    bool change(toolkit::CControlUI& sender);

private:
    void refresh(const zone::ZoneSession::History::Changes& changes);
    void changeActive(bool active);
    /// Whether there are a current zone and a frame.
    [[nodiscard]] bool hasShape() const;

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    edit::Subscription m_changes;
};

} // namespace zoneedit
