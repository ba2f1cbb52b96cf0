// Fills the map of the branch editor and follows every edit. Large scenes are laid out on a thread.
// Used by the branch editor. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "edit/Observers.h"
#include "jobs/BackgroundJob.h"
#include "map/MapScene.h"
#include "scene/SceneSession.h"
#include "ui/Controls.h"
#include "ui/map/MapLayouts.h"
#include "ui/map/MapStills.h"
#include "ui/map/SceneMap.h"

namespace platform {
class EventLoop;
}
namespace stills {
class StillService;
}

namespace ui {

class MapPresenter {
public:
    /// `folder`: the scene's, ending in a separator; empty when it is unknown. `stills` may be
    /// null. `errors`: how many a branch has. `mayEdit`: whether the scene can be edited now. All
    /// of them outlive the presenter.
    MapPresenter(Controls controls, scene::SceneSession& session, const std::string& folder,
                 platform::EventLoop& loop, stills::StillService* stills,
                 std::function<int(int branch)> errors, std::function<bool()> mayEdit);
    ~MapPresenter();
    MapPresenter(const MapPresenter&) = delete;
    MapPresenter& operator=(const MapPresenter&) = delete;

    // The map may still show the scene as it was: it numbers the branches in its own way.
    /// The branch on show is another one.
    void choose(int branch);
    void setFound(const std::vector<int>& branches);
    /// The branch that the map sent this number of; -1 when it has been removed meanwhile.
    [[nodiscard]] int branchOf(int number) const;
    void zoom(int by);
    void fit();
    /// Findings have changed.
    void showErrors();

private:
    using Token = scene::SceneSession::BranchToken;
    struct Content {
        std::shared_ptr<const map::MapScene> scene;
        std::vector<Token> branches; ///< which these are

        /// -1 when it is not in the scene.
        [[nodiscard]] int find(const Token& branch) const;
    };

    [[nodiscard]] SceneMap* control() const;
    void update();
    void link(int branch, int action, int target);
    void layOut();
    void show(const std::shared_ptr<MapLayouts>& layouts);
    [[nodiscard]] SceneMap::Kept kept(int chosenBefore) const;
    void showFound() const;
    [[nodiscard]] bool isUpToDate() const { return m_shown.scene == m_content.scene; }
    void showZoom() const;

    Controls m_controls;
    scene::SceneSession& m_session;
    std::function<bool()> m_mayEdit;
    Content m_content;
    Content m_shown;                     ///< former one, while a large one is laid out
    std::unique_ptr<MapStills> m_stills; ///< null: there is no map
    bool m_isStale = false;              ///< the scene has changed since the layout began
    Token m_chosen;
    std::set<Token, std::owner_less<Token>> m_found;
    jobs::BackgroundJob m_job;
    edit::Subscription m_subscription;
};

} // namespace ui
