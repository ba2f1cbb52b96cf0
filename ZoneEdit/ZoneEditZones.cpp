#include <algorithm>
#include <utility>
#include <vector>

#include "ZoneEdit/ZoneEdit.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneTexts.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "toolkit/controls/CComboUI.h"
#include "ui/Confirmation.h"
#include "ui/SceneHints.h"
#include "video/Video.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

int ZoneEdit::selectedZone() const {
    const auto* combo = FindControl<toolkit::CComboUI>(kZoneCombo);
    return combo != nullptr && m_zones ? combo->GetCurSel() : -1;
}

void ZoneEdit::fillZones(int select) {
    auto* combo = find<toolkit::CComboUI>(kZoneCombo);
    if (combo == nullptr || !m_zones) {
        return;
    }
    std::vector<std::string> names;
    for (int zone = 0; zone < m_zones->zoneCount(); ++zone) {
        names.push_back(m_zones->getZoneName(zone));
    }
    m_zoneNames = ui::NameList(std::move(names));
    combo->SetItemTexts(m_zoneNames.shown);
    // A valid index tells chooseZone by a notification; "none" is silent.
    if (!combo->SelectItem(std::min(select, combo->GetCount() - 1)) || combo->GetCurSel() < 0) {
        m_editing->currentZone = -1;
        showZone();
    }
    updateEnabled();
    showCaption();
}

void ZoneEdit::chooseZone(Control& /*sender*/) {
    m_editing->currentZone = selectedZone();
    showZone();
}

void ZoneEdit::showZone() {
    const int zone = selectedZone();
    if (Control* edit = findControl(kZoneEdit)) {
        edit->SetText(zone >= 0 ? core::displayText(m_zones->getZoneName(zone)) : std::u16string());
        m_shownName = edit->GetText();
    }
    showActive();
    repaintVideo();
}

void ZoneEdit::renameZone(Control& sender) {
    const int zone = selectedZone();
    // An edit cannot hold every name that a file can: a text nobody touched is no new name.
    if (zone < 0 || sender.GetText() == m_shownName) {
        return;
    }
    m_zones->setZoneName(zone, core::storedText(sender.GetText()));
    noteEdit();
    fillZones(zone);
}

void ZoneEdit::addZone() {
    if (checkedVideo(kAddZoneLine) == nullptr) {
        return;
    }
    if (!hasFrames() || !m_zones) {
        return;
    }
    const auto zone = zone::Zone::create(loadedVideo()->frameCount);
    if (!zone) {
        return;
    }
    zone->setName("Zone " + std::to_string(++m_zoneCounter));
    m_zones->addZone(zone);
    noteEdit();
    fillZones(m_zones->zoneCount() - 1);
}

void ZoneEdit::removeZone() {
    if (selectedZone() < 0) {
        return;
    }
    SetAnswer(kNo);
    ui::Confirmation::ask(context(), *this, "Remove Zone?",
                          "Are you sure you want to remove the zone?");
    const int zone = selectedZone();
    if (answer() == kYes && zone >= 0) {
        m_zones->removeZone(zone);
        m_editing->removeZone(zone);
        noteEdit();
        fillZones(zone);
    }
}

void ZoneEdit::saveZones() {
    if (m_zones && m_loaded) {
        const bool wasDamaged = m_zones->loadReport().problem != zone::LoadProblem::none;
        m_zones->save(context().state.zoneEditVideo);
        m_notice.clear();
        m_saved.clear();
        if (m_zones->lastSaveFailure().empty()) {
            m_saved = ui::savedText() + u" " +
                      (wasDamaged ? keptText(m_zones->keptAs()) + u" " : std::u16string());
        }
        showCaption();
    }
}

void ZoneEdit::noteEdit() {
    if (!m_saved.empty()) {
        m_saved.clear();
        showCaption();
    }
    showNotice({});
}

void ZoneEdit::showNotice(std::u16string_view text) {
    if (m_notice != text) {
        m_notice = text;
        showCaption();
    }
}

void ZoneEdit::closeEditor() {
    // A dismissed question counts as yes. Intended.
    SetAnswer(kYes);
    ui::Confirmation::ask(context(), *this, "Close?", "Are you sure you want to close Zone Edit?");
    if (answer() == kYes) {
        Close(1);
    }
}

std::u16string ZoneEdit::problemText() const {
    const std::u16string notSaved =
        m_zones ? ui::notSavedText(m_zones->lastSaveFailure()) : std::u16string();
    if (!notSaved.empty() || !m_notice.empty() || !m_zones) {
        return notSaved;
    }
    const std::u16string unread = loadProblemText(
        m_zones->loadReport(), core::withoutExtension(context().state.zoneEditVideo));
    const bool isUnknown = m_saved.empty() && !hasFrames();
    return unread.empty() && isUnknown ? std::u16string(kUnknownLength) : unread;
}

void ZoneEdit::showCaption() {
    std::u16string text = core::displayText(core::fileName(context().state.zoneEditVideo));
    const std::u16string problem = problemText();
    if (!showProblem(problem, u"") && !problem.empty()) {
        text += u"    " + problem;
    }
    setTextOf(kVideoLabel, text);
    setTextOf(kNoteLabel,
              m_notice.empty() ? m_saved + zoneNamesHint(m_zoneNames.stored) : m_notice);
    setVisibleOf(kNoteLabel, problem.empty());
}

void ZoneEdit::updateEnabled() {
    const bool hasZones = m_zones && m_zones->zoneCount() > 0;
    for (const std::u16string_view name : {kZoneCombo, kZoneEdit, kRemoveZoneButton}) {
        setEnabledOf(name, hasZones);
    }
    if (!hasFrames()) {
        setTextOf(kEmptyLine, kUnknownLengthShort);
    }
    setVisibleOf(kEmptyLine, !hasZones);
}

} // namespace zoneedit
