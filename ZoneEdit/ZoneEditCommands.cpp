// What keys, buttons and rows of menus do in the zone editor.
#include <string>
#include <string_view>
#include <utility>

#include "ZoneEdit/FollowPresenter.h"
#include "ZoneEdit/FramesPresenter.h"
#include "ZoneEdit/HistoryPresenter.h"
#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/PlayPresenter.h"
#include "ZoneEdit/RangePresenter.h"
#include "ZoneEdit/TimelinePresenter.h"
#include "ZoneEdit/ViewToggles.h"
#include "ZoneEdit/ZoneEdit.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZonesPanel.h"
#include "ZoneEdit/ZonesPresenter.h"
#include "toolkit/controls/COptionUI.h"
#include "ui/Controls.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "zone/EditContext.h"

namespace zoneedit {

void ZoneEdit::bindCommands() {
    namespace command = ui::command;
    commands().bind(command::kSave, [this] { saveZones(); });
    commands().bind(command::kMenu, [this] { showMenu(ui::kZoneEditorMenu); });
    commands().bind(
        command::kEarlierVersions, [this] { showVersions(); }, [this] { return m_loaded; });
    commands().bind(command::kClose, [this] { closeEditor(); });
    commands().bind(command::kStop, [this] { stop(); });
    commands().bind(command::kBackTen, [this] { m_frames->backTen(); });
    commands().bind(command::kBack, [this] { m_frames->back(); });
    commands().bind(command::kForward, [this] { m_frames->forward(); });
    commands().bind(command::kForwardTen, [this] { m_frames->forwardTen(); });
    bindTime();
    bindHistory();
    bindView();
    bindZones();
    bindFollow();
}

void ZoneEdit::bindZones() {
    namespace command = ui::command;
    const auto hasZones = [this] { return m_zones && m_zones->hasZones(); };
    const auto isChosen = [this] { return m_zones && m_zones->canRemove(); };
    for (const std::string_view id : {command::kAddZone, command::kPanelAddZone}) {
        commands().bind(id, [this] { m_zones->add(); });
    }
    commands().bind(
        command::kRemoveZone, [this] { removeZone(); }, hasZones);
    commands().bind(
        command::kPanelRemoveZone, [this] { remove(); }, isChosen);
    for (const std::string_view id : {command::kDuplicateZone, command::kPanelDuplicateZone}) {
        commands().bind(
            id, [this] { m_session->duplicateZone(m_session->context().currentZone); }, isChosen);
    }
    commands().bind(
        command::kRename,
        [this] {
            if (m_panel->hasFocus()) {
                m_panel->startRename();
            } else {
                controls().startTyping(kZoneEdit);
            }
        },
        hasZones);
    commands().bind(
        command::kNextZone, [this] { chooseBeside(1); }, hasZones);
    commands().bind(
        command::kZoneBefore, [this] { chooseBeside(-1); }, hasZones);
    const std::pair<std::string_view, std::u16string_view> options[] = {
        {command::kMoveTool, kToolOptions[0]},
        {command::kAddOneTool, kToolOptions[1]},
        {command::kAddManyTool, kToolOptions[2]},
        {command::kDeleteTool, kToolOptions[3]},
        {command::kActive, kActiveOption}};
    for (const auto& [id, name] : options) {
        commands().bind(id, [this, name = name] {
            if (auto* option = find<toolkit::COptionUI>(name)) {
                option->Activate();
            }
        });
    }
}

void ZoneEdit::bindView() {
    namespace command = ui::command;
    const std::pair<std::string_view, Toggle> switches[] = {
        {command::kAllZones, Toggle::allZones},     {command::kOnion, Toggle::onion},
        {command::kLoupe, Toggle::loupe},           {command::kPanel, Toggle::panel},
        {command::kClearLines, Toggle::clearLines}, {command::kGrabDistance, Toggle::grabDistance}};
    for (const auto& [id, toggle] : switches) {
        commands().bindSwitch(
            id, [this, toggle = toggle] { m_toggles->turn(toggle); },
            [this, toggle = toggle] { return m_toggles && m_toggles->isOn(toggle); });
    }
}

void ZoneEdit::bindFollow() {
    namespace command = ui::command;
    const auto bind = [this](std::string_view id, auto act) {
        commands().bind(
            id, [this, act] { act(*m_follow); }, [this] { return m_follow != nullptr; });
    };
    for (const std::string_view id : {command::kFollow, command::kFollowButton}) {
        commands().bind(
            id, [this] { m_follow->start(); }, [this] { return m_follow && m_follow->canStart(); });
    }
    bind(command::kFollowStop, [](FollowPresenter& follow) { follow.stop(); });
    commands().bind(
        command::kFollowAccept, [this] { m_follow->accept(); },
        [this] { return m_follow && (m_follow->isRunning() || m_follow->canAccept()); });
    bind(command::kFollowDiscard, [](FollowPresenter& follow) { follow.discard(); });
}

void ZoneEdit::bindTime() {
    namespace command = ui::command;
    commands().bind(
        command::kPlayVideo, [this] { m_player->toggle(); },
        [this] { return m_player && m_video.frameCount() > 1; });
    commands().bind(command::kFirstFrame, [this] { m_timeline->first(); });
    commands().bind(command::kLastFrame, [this] { m_timeline->last(); });
    commands().bind(command::kKeyBefore, [this] { m_timeline->keyBefore(); });
    commands().bind(command::kNextKey, [this] { m_timeline->nextKey(); });
    commands().bind(command::kTimelineFit, [this] { m_timeline->fit(); });
    commands().bind(command::kRangeBegin, [this] { m_range->begin(); });
    commands().bind(command::kRangeEnd, [this] { m_range->end(); });
}

void ZoneEdit::bindHistory() {
    namespace command = ui::command;
    commands().bind(
        command::kUndo, [this] { m_history->undo(); },
        [this] { return m_history && m_history->canUndo(); },
        [this] { return m_history ? m_history->undoName() : std::u16string(); });
    commands().bind(
        command::kRedo, [this] { m_history->redo(); },
        [this] { return m_history && m_history->canRedo(); },
        [this] { return m_history ? m_history->redoName() : std::u16string(); });
    commands().bind(command::kNoticeUndo, [this] { m_history->undo(); });
    commands().bind(command::kOnlyThisFrame, [this] { m_session->keepToOneFrame(); });
    commands().bind(command::kOnAllFrames, [this] { m_session->extendToAllFrames(); });
    commands().bind(command::kRestoreDraft, [this] { restoreDraft(); });
    commands().bind(command::kCloseNotice, [this] { m_notice->close(); });
}

} // namespace zoneedit
