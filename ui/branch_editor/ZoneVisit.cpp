#include "ui/branch_editor/ZoneVisit.h"

#include <optional>
#include <utility>
#include <vector>

#include "core/Texts.h"
#include "ui/SceneHints.h"
#include "ui/branch_editor/ActionPresenter.h"
#include "ui/branch_editor/BranchPresenter.h"
#include "ui/branch_editor/ChosenActions.h"
#include "ui/branch_editor/VideoPresenter.h"

namespace ui {

void ZoneVisit::keepPlace() {
    const std::vector<int> rows = m_parts.chosen.selected();
    m_parts.state.branchPlace = {m_parts.branches.shown(), rows.empty() ? -1 : rows.front(),
                                 m_parts.actions.offset()};
}

void ZoneVisit::begin(const std::string& video, bool resumes) {
    keepPlace();
    m_parts.state.zoneEditVideo = m_parts.folder + video;
    m_parts.state.zoneEditResumes = resumes;
    m_parts.state.zoneEditRequest = true;
}

void ZoneVisit::end(const app_state::ScreenResult& result,
                    const std::function<void(StripOffer)>& offer) {
    if (const auto place = std::exchange(m_parts.state.branchPlace, {})) {
        m_parts.branches.show(place->branch);
        m_parts.chosen.go(place->action);
        m_parts.actions.scrollTo(place->scroll);
    }
    const std::string& path = m_parts.state.zoneEditVideo;
    if (!result.renamedZones.empty() && path.starts_with(m_parts.folder)) {
        offer(zoneRenameOffer(m_parts.session, path.substr(m_parts.folder.size()),
                              result.renamedZones));
    }
}

std::u16string ZoneVisit::hint() const {
    if (m_parts.branches.shown() < 0) {
        return {};
    }
    const std::string own = m_parts.videos.ownVideo();
    const std::string listed = m_parts.videos.videoAhead();
    if (!listed.empty() && listed != (own.empty() ? m_parts.videos.shownName() : own)) {
        return otherVideoText(listed, own);
    }
    const bool lacksZones = m_parts.actions.waitsForZone() && m_parts.videos.lacksZones();
    return lacksZones ? core::tr(kNoZonesHint) : std::u16string();
}

} // namespace ui
