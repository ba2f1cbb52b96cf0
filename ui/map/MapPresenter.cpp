#include "ui/map/MapPresenter.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "edit/History.h"
#include "scene/SceneChange.h"
#include "ui/FigureTexts.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

using namespace branch_list;

namespace {

constexpr std::size_t kSmall = 400; ///< branches and actions that are laid out at once

bool isSmall(const map::MapScene& scene) {
    std::size_t size = scene.branches.size();
    for (const map::MapBranch& branch : scene.branches) {
        size += branch.actions.size();
    }
    return size <= kSmall;
}

} // namespace

MapPresenter::MapPresenter(Controls controls, scene::SceneSession& session,
                           const std::string& folder, platform::EventLoop& loop,
                           stills::StillService* stills, std::function<int(int)> errors,
                           std::function<bool()> mayEdit)
    : m_controls(controls), m_session(session), m_mayEdit(std::move(mayEdit)), m_job(loop),
      m_subscription(session.observe([this](const auto& /*changes*/) { update(); })) {
    SceneMap* map = control();
    if (map == nullptr) {
        return;
    }
    m_stills = std::make_unique<MapStills>(*map, stills, folder);
    map->setStills([this](int branch) {
        return m_stills->of(m_shown.scene->branches[static_cast<std::size_t>(branch)]);
    });
    map->setErrors([this, errors = std::move(errors)](int number) {
        const int branch = isUpToDate() ? number : branchOf(number);
        return branch >= 0 ? errors(branch) : 0;
    });
    map->setOnZoom([this] { showZoom(); });
    map->setOnLink([this](int branch, int action, int target) { link(branch, action, target); });
    update();
}

MapPresenter::~MapPresenter() {
    m_job.cancel();
    if (SceneMap* map = control()) {
        map->setStills({});
        map->setErrors({});
        map->setOnZoom({});
        map->setOnLink({});
    }
}

SceneMap* MapPresenter::control() const {
    return m_controls.find<SceneMap>(kSceneMap);
}

int MapPresenter::Content::find(const Token& branch) const {
    const auto found = std::find_if(branches.begin(), branches.end(), [&](const Token& one) {
        return !one.owner_before(branch) && !branch.owner_before(one);
    });
    return found != branches.end() ? static_cast<int>(found - branches.begin()) : -1;
}

void MapPresenter::update() {
    auto scene = std::make_shared<const map::MapScene>(map::readMap(m_session.scene()));
    m_content.branches.clear();
    for (int branch = 0; branch < m_session.branchCount(); ++branch) {
        m_content.branches.push_back(m_session.token(branch));
    }
    if (m_content.scene != nullptr && *scene == *m_content.scene) {
        if (isUpToDate()) { // branches that look the same may have changed places
            m_shown.branches = m_content.branches;
            if (SceneMap* map = control()) {
                map->choose(m_shown.find(m_chosen));
            }
            showFound();
        }
        return;
    }
    m_content.scene = std::move(scene);
    if (isSmall(*m_content.scene)) {
        m_isStale = m_job.isRunning();
        show(std::make_shared<MapLayouts>());
    } else if (m_job.isRunning()) {
        m_isStale = true;
    } else {
        layOut();
    }
    if (m_stills != nullptr) {
        m_stills->want(*m_content.scene);
    }
}

/// As one step; a target of -1 is a new branch.
void MapPresenter::link(int branch, int action, int target) {
    if (!m_mayEdit() || !isUpToDate()) {
        return;
    }
    using scene::SceneStep;
    auto step =
        m_session.begin({target < 0 ? SceneStep::addBranch : SceneStep::target, branch, action});
    if (target < 0) {
        m_session.addBranch();
        target = m_session.branchCount() - 1;
    }
    m_session.setTarget(branch, action, m_session.branchName(target));
    step.commit();
}

void MapPresenter::layOut() {
    m_isStale = false;
    const auto layouts = std::make_shared<MapLayouts>();
    const auto work = [layouts, scene = m_content.scene](jobs::BackgroundJob::Control& control) {
        *layouts = layOutAll(*scene, [&control] { return control.isCancelled(); });
    };
    m_job.start(work, {}, [this, layouts](bool isWhole) {
        if (!m_isStale && isWhole) {
            show(layouts);
        } else if (m_isStale && !isSmall(*m_content.scene)) {
            layOut();
        }
    });
}

void MapPresenter::show(const std::shared_ptr<MapLayouts>& layouts) {
    SceneMap* map = control();
    const SceneMap::Kept kept = this->kept(map != nullptr ? map->chosen() : -1);
    m_shown = m_content;
    if (map != nullptr) {
        map->show(m_shown.scene, layouts, m_shown.find(m_chosen), kept);
        showFound();
    }
}

/// The chosen branch or, if that one is new, the one that was chosen before.
SceneMap::Kept MapPresenter::kept(int chosenBefore) const {
    const int before = m_shown.find(m_chosen);
    if (before >= 0) {
        return {before, m_content.find(m_chosen)};
    }
    const auto index = static_cast<std::size_t>(chosenBefore);
    return index < m_shown.branches.size()
               ? SceneMap::Kept{chosenBefore, m_content.find(m_shown.branches[index])}
               : SceneMap::Kept{};
}

/// One that the map does not show yet is chosen when it does.
void MapPresenter::choose(int branch) {
    m_chosen = branch >= 0 ? m_session.token(branch) : Token();
    const int number = m_shown.find(m_chosen);
    SceneMap* map = control();
    if (map != nullptr && (number >= 0 || branch < 0)) {
        map->choose(number);
    }
}

void MapPresenter::setFound(const std::vector<int>& branches) {
    m_found.clear();
    for (const int branch : branches) {
        m_found.insert(m_session.token(branch));
    }
    showFound();
}

void MapPresenter::showFound() const {
    std::vector<int> numbers;
    for (std::size_t i = 0; i < m_shown.branches.size(); ++i) {
        if (m_found.contains(m_shown.branches[i])) {
            numbers.push_back(static_cast<int>(i));
        }
    }
    if (SceneMap* map = control()) {
        map->setFound(std::move(numbers));
    }
}

int MapPresenter::branchOf(int number) const {
    const auto index = static_cast<std::size_t>(number);
    return index < m_shown.branches.size() ? m_session.find(m_shown.branches[index]) : -1;
}

void MapPresenter::zoom(int by) {
    if (SceneMap* map = control()) {
        map->zoom(by);
    }
}

void MapPresenter::fit() {
    if (SceneMap* map = control()) {
        map->fit();
    }
}

void MapPresenter::showErrors() {
    if (SceneMap* map = control()) {
        map->errorsChanged();
    }
}

void MapPresenter::showZoom() const {
    if (const SceneMap* map = control()) {
        m_controls.setText(kZoomLabel, percentText(map->zoomPercent()));
    }
}

} // namespace ui
