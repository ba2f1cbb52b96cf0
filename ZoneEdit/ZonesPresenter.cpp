#include "ZoneEdit/ZonesPresenter.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "ZoneEdit/FlagsPresenter.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneTexts.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "edit/History.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneOperations.h"

namespace zoneedit {

ZonesPresenter::ZonesPresenter(ui::Controls controls, EditedVideo& video,
                               zone::ZoneSession& session, FlagsPresenter& flags)
    : m_controls(controls), m_video(video), m_session(session), m_flags(flags),
      m_changes(session.observe([this](const auto& changes) { refresh(changes); })) {}

void ZonesPresenter::showAll() {
    fillList();
    if (m_video.lacksLength()) {
        m_controls.setText(kEmptyLine, core::tr(kUnknownLengthShort));
    }
}

void ZonesPresenter::refresh(const zone::ZoneSession::History::Changes& changes) {
    if (std::any_of(changes.begin(), changes.end(), [](const auto& change) {
            return change.what != zone::ZoneChange::What::shapes;
        })) {
        fillList();
    }
}

void ZonesPresenter::fillList() {
    std::vector<std::string> names;
    for (int zone = 0; zone < m_session.zones().zoneCount(); ++zone) {
        names.push_back(m_session.zones().getZoneName(zone));
    }
    m_names = ui::NameList(std::move(names));
    if (auto* combo = m_controls.find<toolkit::CComboUI>(kZoneCombo)) {
        const int zone = m_session.context().currentZone;
        combo->SetItemTexts(m_names.shown);
        // A valid index tells choose() by a notification; "none" is silent.
        if (!combo->SelectItem(zone) || combo->GetCurSel() < 0) {
            m_session.chooseZone(-1);
            showZone();
        }
    }
    showEnabled();
}

void ZonesPresenter::choose() {
    if (const auto* combo = m_controls.find<toolkit::CComboUI>(kZoneCombo)) {
        m_session.chooseZone(combo->GetCurSel());
    }
    showZone();
}

void ZonesPresenter::showZone() {
    const int zone = m_session.context().currentZone;
    if (toolkit::CControlUI* edit = m_controls.find(kZoneEdit)) {
        edit->SetText(zone >= 0 ? core::displayText(m_session.zones().getZoneName(zone))
                                : std::u16string());
        m_shownName = edit->GetText();
    }
    m_flags.showActive();
    m_video.repaintZone();
}

void ZonesPresenter::rename() {
    const toolkit::CControlUI* edit = m_controls.find(kZoneEdit);
    const int zone = m_session.context().currentZone;
    // An edit cannot hold every name that a file can: a text nobody touched is no new name.
    if (edit == nullptr || zone < 0 || edit->GetText() == m_shownName) {
        return;
    }
    m_session.renameZone(zone, core::storedText(edit->GetText()));
    showZone();
}

void ZonesPresenter::show(int zone) {
    auto* combo = m_controls.find<toolkit::CComboUI>(kZoneCombo);
    if (combo != nullptr && combo->GetCurSel() != zone) {
        combo->SelectItem(zone); // which tells choose()
    }
}

bool ZonesPresenter::restoreText() {
    const toolkit::CControlUI* edit = m_controls.find(kZoneEdit);
    const bool differs = edit != nullptr && edit->GetText() != m_shownName;
    m_controls.setText(kZoneEdit, m_shownName);
    return differs;
}

void ZonesPresenter::add(const zone::ShapeStretch* shapes) {
    if (m_video.checkedControl(kAddZoneLine) != nullptr && m_video.hasFrames()) {
        m_session.addZone("Zone " + std::to_string(++m_zoneCounter), m_video.frameCount(), shapes);
    }
}

void ZonesPresenter::remove() {
    if (canRemove()) {
        m_session.removeZone(m_session.context().currentZone);
    }
}

void ZonesPresenter::showEnabled() {
    for (const std::u16string_view name : {kZoneCombo, kZoneEdit}) {
        m_controls.setEnabled(name, hasZones());
    }
    m_controls.setVisible(kEmptyLine, !hasZones());
}

} // namespace zoneedit
