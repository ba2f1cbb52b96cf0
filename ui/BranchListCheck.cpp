// How the branch editor shows what is wrong with the scene, and leads to it.
#include <memory>

#include "app/state/ScreenState.h"
#include "app/state/SharedServices.h"
#include "check/FactsReader.h"
#include "check/Finding.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "scene/SceneSession.h"
#include "ui/BranchList.h"
#include "ui/BranchListParts.h"
#include "ui/Controls.h"
#include "ui/WindowContext.h"
#include "ui/branch_editor/ActionPresenter.h"
#include "ui/branch_editor/ChosenActions.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/ImportPresenter.h"
#include "ui/branch_editor/LeftPane.h"
#include "ui/branch_editor/StripOffer.h"
#include "ui/branch_editor/StripPresenter.h"
#include "ui/branch_editor/ZoneVisit.h"
#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/MapCommands.h"
#include "ui/map/MapPresenter.h"

namespace ui {

using namespace branch_list;

std::shared_ptr<check::FactsReader> BranchList::readerOfFiles() {
    std::shared_ptr<check::FactsReader>& reader = context().services.sceneFiles;
    if (m_folder.empty()) {
        return nullptr;
    }
    if (reader == nullptr || reader->folder() != m_folder) {
        // For a thread: the system's own, which nobody replaces meanwhile.
        reader = std::make_shared<check::FactsReader>(platform::nativeFileSystem(),
                                                      platform::nativeClock(), m_folder);
    }
    return reader;
}

void BranchList::bindCheck() {
    Parts& parts = *m_parts;
    const auto hasFindings = [&parts] { return parts.findings.hasRows(); };
    commands().bind(command::kCheck, [this] { toggleCheck(); });
    commands().bind(
        command::kNextFinding, [&parts] { parts.findings.step(1); }, hasFindings);
    commands().bind(
        command::kFindingBefore, [&parts] { parts.findings.step(-1); }, hasFindings);
    commands().bind(command::kMap, [this] { toggleMap(); });
    const auto isMapShown = [&parts] { return parts.leftPane.isShown(LeftPane::Page::map); };
    commands().bind(
        command::kMapFit, [&parts] { parts.map.fit(); }, isMapShown);
    commands().bind(
        command::kMapIn, [&parts] { parts.map.zoom(1); }, isMapShown);
    commands().bind(
        command::kMapOut, [&parts] { parts.map.zoom(-1); }, isMapShown);
    commands().bind(command::kFix, [&parts] { parts.strip.answer(kFixButton); });
    commands().bind(command::kFixOther, [&parts] { parts.strip.answer(kFixOtherButton); });
}

void BranchList::showPlace(const check::Finding& finding, bool opens) {
    if (opens && finding.zoneNumber >= 0 && isFree()) {
        const int frame = finding.frames ? finding.frames->first : 0;
        context().state.zonePlaces[m_folder + finding.video] = {frame, finding.zoneNumber};
        m_parts->visit.begin(finding.video, true);
        Close(1);
        return;
    }
    m_parts->strip.forgetRemedy();
    m_parts->imports.offerRemedy(finding);
    if (finding.branch < 0) {
        return;
    }
    m_parts->branches.show(finding.branch);
    m_parts->chosen.go(finding.action);
    if (opens) {
        m_parts->leftPane.leave();
    }
    if (finding.kind == check::Kind::missingTarget && finding.arguments.size() == 2) {
        const auto chooseOther = [this, branch = m_parts->session.token(finding.branch),
                                  action = finding.action] {
            m_parts->branches.show(m_parts->session.find(branch)); // another one may be on show
            m_parts->chosen.go(action);
            m_parts->actions.chooseTargetOf(action);
        };
        m_parts->strip.offer(
            targetOffer(m_parts->session, finding.branch, finding.action, chooseOther));
    }
}

void BranchList::findingsChanged() {
    if (m_parts) { // not while they are made
        m_parts->map.showErrors();
    }
}

void BranchList::toggleCheck() {
    const bool shown = !m_parts->leftPane.isShown() || m_parts->findings.isFolded();
    if (shown) {
        m_parts->leftPane.show(true);
    } else {
        m_parts->leftPane.leave();
    }
    if (m_parts->leftPane.isShown()) {
        m_parts->findings.fold(!shown);
    }
    controls().setFocus(shown ? kFindingsList : kBranchCombo);
}

void BranchList::pickBranch(int branch) {
    if (branch >= 0) {
        m_parts->branches.show(branch);
    } else {
        m_parts->map.choose(m_parts->branches.shown());
    }
}

void BranchList::toggleMap() {
    const bool shown = !m_parts->leftPane.isShown(LeftPane::Page::map);
    if (shown) {
        m_parts->leftPane.showPage(LeftPane::Page::map);
    } else {
        m_parts->leftPane.show(false);
    }
    controls().setFocus(shown ? kSceneMap : kBranchCombo);
}

void BranchList::leavePane() {
    if (m_parts->leftPane.isInPlace()) {
        m_parts->leftPane.leave();
        controls().setFocus(kBranchCombo);
    }
}

} // namespace ui
