#include "ZoneEdit/HistoryPresenter.h"

#include <algorithm>

#include "ZoneEdit/FramesPresenter.h"
#include "ZoneEdit/ZonesPresenter.h"
#include "core/FileError.h"
#include "core/Services.h"
#include "core/Text.h"
#include "platform/Clock.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

HistoryPresenter::HistoryPresenter(ui::Controls controls, zone::ZoneSession& session,
                                   ZonesPresenter& zones, FramesPresenter& frames,
                                   const std::string& basePath)
    : m_session(session), m_zones(zones), m_frames(frames), m_state(controls),
      // The binary file holds the work, and is replaced last.
      m_savedAt(std::max(ui::fileTime(basePath + "-ZoneInfo.bin"),
                         ui::fileTime(basePath + "-ZoneInfo.xml"))),
      m_changes(session.observe([this](const auto&) { showState(); })),
      m_saves(session.observeSaves([this](bool good) {
          m_savedAt = good ? core::services().clock->now() : m_savedAt;
          showState();
      })) {
    showState();
}

void HistoryPresenter::showState() {
    m_state.show({.isModified = m_session.isModified(),
                  .saveFailed = !m_session.zones().lastSaveFailure().empty(),
                  .hasContents = m_session.zones().zoneCount() > 0,
                  .savedAt = m_savedAt});
}

void HistoryPresenter::go(const std::optional<zone::StepLabel>& step) {
    if (!step) {
        return;
    }
    if (m_session.zones().zone(step->zone)) {
        m_zones.show(step->zone);
    }
    if (step->frame >= 0) {
        m_frames.show(step->frame);
    }
}

std::u16string HistoryPresenter::nameOf(const zone::StepLabel* step) {
    return step != nullptr ? core::displayText(zone::stepName(step->name)) : std::u16string();
}

} // namespace zoneedit
