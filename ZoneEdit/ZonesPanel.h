// The list of all zones beside the picture: colour, name, whether the zone is active on the frame
// on show, and whether its outline is shown. The row of the edited zone is chosen; its name can be
// edited in place. Part of the zone editor. UI thread only.
#pragma once

#include <memory>
#include <string>

#include "ZoneEdit/EditedVideo.h"
#include "edit/Observers.h"
#include "ui/Controls.h"
#include "zone/ZoneSession.h"

namespace toolkit {
class CControlUI;
class CListUI;
} // namespace toolkit

namespace zoneedit {

class OutlinesLayer;
class ZonesPresenter;

class ZonesPanel {
public:
    /// `outlines` may be null. All others outlive it.
    ZonesPanel(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
               ZonesPresenter& zones, std::shared_ptr<OutlinesLayer> outlines);

    /// After another choice of zones.
    void showAll();
    /// After a step to another frame, or another choice of the zone.
    void refresh();
    /// The author chose a row.
    void choose();
    /// The author pressed something in a row. False when `sender` is in none.
    bool press(toolkit::CControlUI& sender);
    /// Whether the list has the focus, so that renaming happens there.
    [[nodiscard]] bool hasFocus() const;
    /// Edits the name of the chosen row.
    void startRename();
    /// Takes, or drops, the name that is being edited. False when none is.
    bool endRename(bool takes);

private:
    void changed(const zone::ZoneSession::History::Changes& changes);
    [[nodiscard]] std::unique_ptr<toolkit::CControlUI> makeRow(int zone);
    void showRow(toolkit::CControlUI& row, int zone);
    [[nodiscard]] int rowOf(const toolkit::CControlUI& control) const;
    [[nodiscard]] toolkit::CListUI* list() const;

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    ZonesPresenter& m_zones;
    std::shared_ptr<OutlinesLayer> m_outlines;
    int m_renamed = -1;         ///< the zone whose name is being edited
    std::u16string m_shownName; ///< in its field at first
    bool m_isShowing = false;   ///< the program chooses a row
    edit::Subscription m_changes;
};

} // namespace zoneedit
