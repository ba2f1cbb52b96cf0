#include "ZoneEdit/DraftPresenter.h"

#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "core/Texts.h"
#include "recovery/DraftInfo.h"
#include "recovery/KeptDrafts.h"
#include "recovery/ZoneDraft.h"
#include "scene/SceneManager.h"
#include "ui/DraftTexts.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/CommonCommands.h"

namespace zoneedit {

DraftPresenter::DraftPresenter(ui::CommandSet& commands, const Links& links)
    : m_links(links), m_problem(links.controls, links.services.drafts.get()) {
    commands.bind(ui::command::kRestoreDraft, [this] { restore(); });
}

DraftPresenter::~DraftPresenter() = default;

void DraftPresenter::keep(const std::string& path) {
    const app_state::SharedServices& services = m_links.services;
    if (!services.drafts || !services.sceneManager) {
        return;
    }
    m_draft = std::make_unique<recovery::ZoneDraft>(m_links.session, *services.drafts,
                                                    services.sceneManager->Name(), path);
    if (const recovery::KeptDraft* draft = m_draft->offered()) {
        m_links.notice.offer(
            ui::draftText(draft->info.video, draft->info.time, m_draft->isSavedSince()),
            {kRestoreDraftButton});
    }
}

void DraftPresenter::restore() {
    m_links.notice.close();
    if (m_draft && !m_draft->restore()) {
        m_links.notice.refuse(core::tr("The unsaved work cannot be read."_tr));
    }
}

} // namespace zoneedit
