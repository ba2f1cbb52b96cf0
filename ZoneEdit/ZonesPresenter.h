// The list of zones: choosing, naming, adding and removing one. Part of the zone editor.
#pragma once

#include <string>

#include "ZoneEdit/EditedVideo.h"
#include "edit/Observers.h"
#include "ui/Controls.h"
#include "ui/NameList.h"
#include "zone/EditContext.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace zoneedit {

class FlagsPresenter;

class ZonesPresenter {
public:
    /// All outlive it.
    ZonesPresenter(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                   FlagsPresenter& flags);

    void showAll();
    /// The author chose an entry of the list.
    void choose();
    /// The author left the edit of the name.
    void rename();
    /// Chooses it.
    void show(int zone);
    /// Gives the edit the name of the current zone back. False when it has it.
    bool restoreText();
    /// Without shapes, or with these.
    void add(const zone::ShapeStretch* shapes = nullptr);
    [[nodiscard]] bool hasZones() const { return m_session.zones().zoneCount() > 0; }
    [[nodiscard]] bool canRemove() const { return m_session.context().currentZone >= 0; }
    void remove();

private:
    void refresh(const zone::ZoneSession::History::Changes& changes);
    void fillList();
    void showZone();
    void showEnabled();

    ui::Controls m_controls;
    EditedVideo& m_video;
    zone::ZoneSession& m_session;
    FlagsPresenter& m_flags;
    ui::NameList m_names;
    std::u16string m_shownName; ///< what the program last put into the name edit
    int m_zoneCounter = 0;      ///< never decreases: names repeat only in another window
    edit::Subscription m_changes;
};

} // namespace zoneedit
