#include <algorithm>

#include "check/SceneNames.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CListUI.h"
#include "ui/BranchList.h"
#include "ui/BranchListControls.h"
#include "ui/SceneHints.h"

namespace ui {

using namespace branch_list;

namespace {

int selectionOf(const toolkit::CComboUI* combo) {
    return combo != nullptr ? combo->GetCurSel() : -1;
}

} // namespace

void BranchList::updateState() {
    updateEnabled();
    updateEmptyText();
    updateOwnVideo();
    updateStatus();
}

void BranchList::updateEnabled() {
    // While a video is being copied nothing may change under the copy; Esc ends it.
    const bool free = !isImporting();
    for (const std::u16string_view name :
         {kSaveButton, kExitButton, kAddBranchButton, kAddVideoButton, kActionList}) {
        setEnabledOf(name, free);
    }
    const int branch = selectionOf(find<toolkit::CComboUI>(kBranchCombo));
    const bool hasBranches = scene() != nullptr && scene()->branchCount() > 0;
    for (const std::u16string_view name :
         {kBranchCombo, kNameEdit, kFirstCheck, kVideoCombo, kAddActionButton}) {
        setEnabledOf(name, free && hasBranches);
    }
    const int video = selectionOf(find<toolkit::CComboUI>(kVideoCombo));
    setEnabledOf(kEditZonesButton, free && branch >= 0 && video >= 0);
    const auto* list = find<toolkit::CListUI>(kActionList);
    setEnabledOf(kRemoveActionButton, free && list != nullptr && list->GetCurSel() >= 0);
}

void BranchList::updateEmptyText() {
    const auto* list = find<toolkit::CListUI>(kActionList);
    const bool hasBranches = scene() != nullptr && scene()->branchCount() > 0;
    const bool empty = list != nullptr && list->GetCount() == 0;
    if (empty) {
        setTextOf(kEmptyHeading, hasBranches ? u"No actions yet" : u"No branches yet");
        setTextOf(kEmptyLine, hasBranches ? u"Press Add Action to say which branch plays next."
                                          : u"Press Add Branch to start the scene.");
    }
    setVisibleOf(kEmptyHeading, empty);
    setVisibleOf(kEmptyLine, empty);
}

void BranchList::updateOwnVideo() {
    // A branch without a video leaves the list on what was shown last.
    const auto* videos = find<toolkit::CComboUI>(kVideoCombo);
    const int branch = selectedBranch();
    bool differs = false;
    if (videos != nullptr && branch >= 0) {
        const std::string own = scene()->branchFilename(branch);
        const int shown = videos->GetCurSel();
        differs = own.empty() || shown < 0 || m_videos[static_cast<std::size_t>(shown)] != own;
        setTextOf(kOwnVideo, ownVideoText(own));
    }
    setVisibleOf(kOwnVideo, differs);
    setVisibleOf(kZonesHint, !differs);
}

jobs::CopyStatus BranchList::importStatus() const {
    jobs::CopyStatus status;
    status.name = m_importNames.front();
    status.count = m_importCount;
    status.number = m_importCount - static_cast<int>(m_importNames.size()) + 1;
    status.copiedBytes = m_import.copiedBytes();
    status.totalBytes = m_import.totalBytes();
    return status;
}

void BranchList::updateStatus() {
    if (scene() == nullptr) {
        return;
    }
    std::u16string problem;
    if (!isImporting()) {
        const std::u16string notSaved = notSavedText(scene()->saveFailure());
        // The note's own place is taken while a problem is shown.
        problem =
            joinSentences({m_problem, notSaved.empty() ? std::u16string() : m_note, notSaved});
    }
    const std::u16string text = isImporting() ? copyText(importStatus()) : statusText();
    setTextOf(kStatus, problem.empty() ? text : problem);
    showProblem(problem, kStatus);
}

void BranchList::forgetNote() {
    // What leaving the edit brought up outlasts the press that left it.
    if (!m_noteIsFresh) {
        m_note.clear();
        m_problem.clear();
    }
}

void BranchList::changed() {
    m_saved.clear();
}

std::u16string BranchList::statusText() {
    if (!m_note.empty()) { // gone with the next action of the user
        return m_saved + m_note;
    }
    for (const std::u16string& hint :
         {findingHint(check::firstUnreadableName(*scene())), unlistedHint(scene()->Name())}) {
        if (!hint.empty()) {
            return m_saved + hint;
        }
    }
    return m_saved + (lacksZones() ? std::u16string(kNoZonesHint) : m_usualStatus);
}

bool BranchList::lacksZones() {
    const int branch = selectedBranch();
    if (branch < 0 || !m_shownZones.stored.empty() ||
        selectionOf(find<toolkit::CComboUI>(kVideoCombo)) < 0) {
        return false;
    }
    std::vector<std::shared_ptr<scene::Action>> actions;
    scene()->branchActions(branch, actions);
    return std::any_of(actions.begin(), actions.end(), [](const auto& action) {
        return action->Type() == scene::Action::kZoneAction;
    });
}

} // namespace ui
