// Keeps the draft of unsaved zones, offers what an earlier run left of them, and says why unsaved
// work cannot be kept. Part of the zone editor. UI thread only.
#pragma once

#include <memory>
#include <string>

#include "app/state/SharedServices.h"
#include "ui/Controls.h"
#include "ui/DraftProblem.h"
#include "zone/ZoneSession.h"

namespace recovery {
class ZoneDraft;
}
namespace ui {
class CommandSet;
}

namespace zoneedit {

class NoticePresenter;

class DraftPresenter {
public:
    /// What it works with. All outlive it.
    struct Links {
        ui::Controls controls;
        zone::ZoneSession& session;
        NoticePresenter& notice;
        const app_state::SharedServices& services;
    };
    DraftPresenter(ui::CommandSet& commands, const Links& links);
    ~DraftPresenter();

    /// From now on; offers what was kept before. `path`: of the video.
    void keep(const std::string& path);

private:
    void restore();

    Links m_links;
    ui::DraftProblem m_problem;
    std::unique_ptr<recovery::ZoneDraft> m_draft; ///< none without the services for it
};

} // namespace zoneedit
