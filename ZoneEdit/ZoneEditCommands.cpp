// What keys, buttons and rows of menus do in the zone editor.
#include <string>
#include <string_view>

#include "ZoneEdit/EditingParts.h"
#include "ZoneEdit/FollowPresenter.h"
#include "ZoneEdit/FrameSelection.h"
#include "ZoneEdit/HeaderPresenter.h"
#include "ZoneEdit/HistoryPresenter.h"
#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/RenamedZones.h"
#include "ZoneEdit/TimeParts.h"
#include "ZoneEdit/ZoneEdit.h"
#include "ZoneEdit/ZoneParts.h"
#include "ZoneEdit/ZoneVersions.h"
#include "ZoneEdit/ZonesPresenter.h"
#include "core/FileError.h"
#include "core/Texts.h"
#include "ui/Confirmation.h"
#include "ui/EarlierVersions.h"
#include "ui/WindowContext.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

void ZoneEdit::bindCommands() {
    namespace command = ui::command;
    commands().bind(command::kSave, [this] { saveZones(); });
    commands().bind(command::kMenu, [this] { showMenu(ui::kZoneEditorMenu); });
    commands().bind(
        command::kEarlierVersions, [this] { showVersions(); }, [this] { return m_loaded; });
    commands().bind(command::kClose, [this] { closeEditor(); });
    commands().bind(command::kStop, [this] { stop(); });
    commands().bind(
        command::kRemoveZone, [this] { removeZone(); },
        [this] { return m_zones && m_zones->list().hasZones(); });
    bindHistory();
    bindFollow();
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
    commands().bind(command::kCloseNotice, [this] { m_notice->close(); });
}

void ZoneEdit::stop() {
    const bool wasTyping =
        m_time->restoreText() || m_zones->restoreText() || m_editing->restoreText();
    if (wasTyping || m_editing->cancelDrag() || m_time->cancelDrag() || m_time->stopPlaying()) {
        return;
    }
    if (m_notice->isShown()) {
        m_notice->close();
    } else if (m_follow && m_follow->isRunning()) {
        m_follow->stop();
    } else if ((!m_follow || !m_follow->discard()) && !m_editing->endAdding()) {
        m_time->selection().clear();
    }
}

void ZoneEdit::removeZone() {
    if (!m_zones->list().canRemove()) {
        return;
    }
    SetAnswer(kNo);
    ui::Confirmation::ask(
        context(), *this, core::trStored("RemoveZoneQuestion|Remove Zone?"_tr),
        core::trStored("RemoveZoneSure|Are you sure you want to remove the zone?"_tr));
    if (answer() == kYes) {
        m_zones->remove();
    }
}

void ZoneEdit::saveZones() {
    if (m_loaded) {
        m_header->save();
        if (m_session->zones().lastSaveFailure().empty()) {
            m_result.renamedZones = m_renamed->in(m_session->zones());
        }
    }
}

void ZoneEdit::showVersions() {
    m_session->endGesture();
    ui::EarlierVersions::show(
        context(), *this, zoneHistory(*m_session, context().state.zoneEditVideo, versionsFolder()));
}

void ZoneEdit::closeEditor() {
    // A dismissed question counts as yes. Intended.
    SetAnswer(kYes);
    ui::Confirmation::ask(context(), *this, core::trStored("CloseQuestion|Close?"_tr),
                          core::trStored("Are you sure you want to close Zone Edit?"_tr));
    if (answer() == kYes) {
        Close(1);
    }
}

} // namespace zoneedit
