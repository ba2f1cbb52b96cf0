// The preview of the branch editor: its commands, and what they do to the window.
#include <utility>

#include "scene/SceneSession.h"
#include "ui/BranchList.h"
#include "ui/BranchListParts.h"
#include "ui/Controls.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/LeftPane.h"
#include "ui/branch_editor/StripPresenter.h"
#include "ui/commands/BranchEditorCommands.h"
#include "ui/commands/CommandSet.h"
#include "ui/preview/PreviewPresenter.h"

namespace ui {

using namespace branch_list;

void BranchList::bindPreview() {
    Parts& parts = *m_parts;
    CommandSet& commands = this->commands();
    const auto isOpen = [&parts] { return parts.preview.isOpen(); };
    commands.bind(
        command::kPlay, [this] { play(-1); },
        [this, &parts] { return !m_folder.empty() && parts.session.branchCount() > 0; });
    commands.bind(
        command::kPlayHere, [this, &parts] { play(parts.branches.shown()); },
        [this, &parts] { return !m_folder.empty() && parts.branches.shown() >= 0; });
    commands.bind(
        command::kPreviewPlay, [&parts] { parts.preview.togglePause(); },
        [&parts] { return parts.preview.isPlaying(); });
    commands.bind(
        command::kPreviewRestart, [&parts] { parts.preview.restart(); }, isOpen);
    commands.bind(
        command::kPreviewBack, [&parts] { parts.preview.back(); },
        [&parts] { return parts.preview.canGoBack(); });
    commands.bind(
        command::kPreviewStop, [this] { stopPreview(); }, isOpen);
    commands.bind(
        command::kCopyPath, [&parts] { parts.preview.copyPath(); }, isOpen);
    for (const auto& [id, speed] : {std::pair{command::kHalfSpeed, 0.5},
                                    {command::kNormalSpeed, 1.0},
                                    {command::kDoubleSpeed, 2.0}}) {
        commands.bindSwitch(
            id, [&parts, speed = speed] { parts.preview.setSpeed(speed); },
            [&parts, speed = speed] { return parts.preview.isSpeed(speed); }, isOpen);
    }
}

void BranchList::play(int branch) {
    m_parts->leftPane.showPage(LeftPane::Page::preview);
    if (branch < 0) {
        m_parts->preview.playFirst();
    } else {
        m_parts->preview.playBranch(branch);
    }
    showEnabled();
}

void BranchList::stopPreview() {
    m_parts->preview.stop();
    if (m_parts->leftPane.isInPlace()) {
        leavePane();
    } else {
        m_parts->leftPane.showPage(LeftPane::Page::map);
        controls().setFocus(kBranchCombo);
    }
    showEnabled();
}

void BranchList::previewNotes(const std::u16string& text) {
    m_parts->strip.showLastingNote(text); // the lists are filled after it, and choose their rows
}

void BranchList::previewChanged() {
    showEnabled();
}

} // namespace ui
