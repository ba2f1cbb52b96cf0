#include "ZoneEdit/FlagsPresenter.h"

#include <algorithm>

#include "ZoneEdit/ZoneEditControls.h"
#include "edit/History.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/COptionUI.h"
#include "zone/EditContext.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneOperations.h"

namespace zoneedit {

FlagsPresenter::FlagsPresenter(ui::Controls controls, EditedVideo& video,
                               zone::ZoneSession& session)
    : m_controls(controls), m_video(video), m_session(session),
      m_changes(session.observe([this](const auto& changes) { refresh(changes); })) {}

void FlagsPresenter::showAll() {
    if (auto* progress = m_controls.find<toolkit::COptionUI>(kProgressOption)) {
        progress->Selected(m_session.context().progressChanges);
    }
    showActive();
}

void FlagsPresenter::showActive() {
    if (auto* option = m_controls.find<toolkit::COptionUI>(kActiveOption)) {
        option->Selected(hasShape() && m_session.zones().isActive(m_session.context().currentZone,
                                                                  m_video.frame()));
        option->Invalidate();
    }
}

bool FlagsPresenter::change(toolkit::CControlUI& sender) {
    const auto* option = toolkit::controlCast<toolkit::COptionUI>(&sender);
    if (option == nullptr) {
        return false;
    }
    if (sender.GetName() == kActiveOption) {
        changeActive(option->IsSelected());
    } else if (sender.GetName() == kProgressOption) {
        m_session.setProgressChanges(option->IsSelected());
    } else {
        return false;
    }
    return true;
}

void FlagsPresenter::changeActive(bool active) {
    if (!hasShape()) {
        showActive();
        return;
    }
    // Setting what is set already would still spread over all later frames.
    const int zone = m_session.context().currentZone;
    if (m_session.zones().isActive(zone, m_video.frame()) != active) {
        m_session.setActive(zone, m_video.frame(), active);
    }
}

void FlagsPresenter::refresh(const zone::ZoneSession::History::Changes& changes) {
    const int zone = m_session.context().currentZone;
    const int frame = m_video.frame();
    const bool isShown = std::any_of(changes.begin(), changes.end(), [&](const auto& change) {
        return change.what == zone::ZoneChange::What::shapes && change.zone == zone &&
               change.frames.first <= frame && frame < change.frames.end;
    });
    if (isShown) {
        showActive();
        m_video.repaintZone();
    }
}

bool FlagsPresenter::hasShape() const {
    return m_session.context().currentZone >= 0 && m_video.frame() >= 0;
}

} // namespace zoneedit
