#include "scene/SceneSession.h"

#include <algorithm>

#include "core/MakeOrNull.h"
#include "edit/Steps.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"

namespace scene {

std::shared_ptr<SceneSession> SceneSession::create(std::shared_ptr<SceneManager> scene) {
    return scene ? core::makeOrNull<SceneSession>(std::move(scene)) : nullptr;
}

SceneSession::SceneSession(std::shared_ptr<SceneManager> scene, edit::Limits limits)
    : m_scene(std::move(scene)), m_history(*m_scene, limits), m_savedText(m_scene->fileText()) {}

bool SceneSession::load(const std::string& name) {
    const bool good = m_scene->Load(name);
    opened(false);
    return good;
}

bool SceneSession::newScene(const std::string& name, const SceneTemplate& start) {
    const bool good = m_scene->newScene(name);
    if (good) {
        addTemplate(*m_scene, start);
        opened(true);
    }
    return good;
}

void SceneSession::opened(bool isNew) {
    m_isNew = isNew;
    m_savedText = m_scene->fileText();
    m_openings.notify();
    m_history.clear({{SceneChange::Part::scene, -1}});
}

bool SceneSession::save(const std::string& folder) {
    const std::shared_ptr<Branch> first = branchAt(0);
    if (first && m_scene->FirstBranch().empty() && !first->ID().empty()) {
        m_history.run({SceneStep::firstBranch, 0}, SwapFirstBranch{first->ID()});
    }
    const bool good = m_scene->Save(folder);
    if (good) {
        m_savedText = m_scene->fileText();
        m_isNew = false;
    }
    m_saves.notify(good);
    return good;
}

bool SceneSession::isModified() const {
    return !m_scene->hasFileText(m_savedText);
}

bool SceneSession::restore(const std::string& sceneXml) {
    const std::shared_ptr<SceneManager> other = SceneManager::create();
    if (m_scene->branches() == nullptr || !other || !other->loadText(sceneXml)) {
        return false;
    }
    other->SetName(m_scene->Name());
    if (m_scene->hasFileText(other->fileText())) {
        return true;
    }
    SwapContents contents{other->FirstBranch(), {}};
    other->branches()->swapBranches(contents.branches);
    m_history.run({SceneStep::restoreVersion}, std::move(contents));
    return true;
}

std::vector<std::string> SceneSession::branchNames() const {
    std::vector<std::string> names;
    m_scene->branchIDs(names);
    return names;
}

bool SceneSession::hasBranch(const std::string& name) const {
    int branch = branchCount() - 1;
    while (branch >= 0 && branchAt(branch)->ID() != name) {
        --branch;
    }
    return branch >= 0;
}

int SceneSession::actionCount(int branch) const {
    std::vector<std::shared_ptr<Action>> actions;
    m_scene->branchActions(branch, actions);
    return static_cast<int>(actions.size());
}

std::vector<Action> SceneSession::actions(int branch) const {
    std::vector<std::shared_ptr<Action>> actions;
    m_scene->branchActions(branch, actions);
    std::vector<Action> values;
    values.reserve(actions.size());
    for (const auto& action : actions) {
        values.push_back(*action);
    }
    return values;
}

Action SceneSession::action(int branch, int action) const {
    const std::shared_ptr<Action> found = m_scene->action(branch, action);
    return found ? *found : Action();
}

std::vector<SceneSession::ActionPlace>
SceneSession::actionsThat(const std::function<bool(const Branch&, const Action&)>& holds) const {
    std::vector<ActionPlace> places;
    for (int branch = 0; branch < branchCount(); ++branch) {
        const std::shared_ptr<Branch> owner = branchAt(branch);
        int number = 0;
        for (const auto& action : owner->actions()) {
            if (holds(*owner, *action)) {
                places.push_back({branch, number});
            }
            ++number;
        }
    }
    return places;
}

std::vector<SceneSession::ActionPlace>
SceneSession::actionsLeadingTo(const std::string& name) const {
    return actionsThat([&](const Branch& /*branch*/, const Action& action) {
        return !name.empty() && action.BranchID() == name;
    });
}

std::vector<SceneSession::ActionPlace>
SceneSession::actionsWaitingFor(const std::string& video, const std::string& zone) const {
    return actionsThat([&](const Branch& branch, const Action& action) {
        return !zone.empty() && action.Type() == Action::kZoneAction &&
               action.Parameter() == zone && branch.Filename() == video;
    });
}

int SceneSession::find(const BranchToken& token) const {
    const std::shared_ptr<const void> sought = token.lock();
    for (int branch = 0; sought && branch < branchCount(); ++branch) {
        if (branchAt(branch) == sought) {
            return branch;
        }
    }
    return -1;
}

std::optional<SceneLabel> SceneSession::undo() {
    const SceneLabel* next = m_history.undoLabel();
    if (next == nullptr) {
        return {};
    }
    SceneLabel label = *next;
    m_history.undo();
    if (label.from >= 0) {
        (label.action >= 0 ? label.action : label.branch) = label.from;
    }
    label.actions = label.actionsBefore;
    return label;
}

std::optional<SceneLabel> SceneSession::redo() {
    const SceneLabel* next = m_history.redoLabel();
    if (next == nullptr) {
        return {};
    }
    const SceneLabel label = *next;
    m_history.redo();
    return label;
}

std::shared_ptr<Branch> SceneSession::branchAt(int index) const {
    BranchManager* branches = m_scene->branches();
    return branches != nullptr ? branches->branch(index) : nullptr;
}

std::shared_ptr<Action> SceneSession::actionAt(int branch, int action) const {
    const std::shared_ptr<Branch> owner = branchAt(branch);
    return owner ? owner->action(action) : nullptr;
}

std::vector<std::shared_ptr<Action>> SceneSession::actionsAt(int branch,
                                                             std::vector<int>& actions) const {
    std::sort(actions.begin(), actions.end());
    actions.erase(std::unique(actions.begin(), actions.end()), actions.end());
    std::vector<std::shared_ptr<Action>> found;
    for (const int number : actions) {
        std::shared_ptr<Action> action = actionAt(branch, number);
        if (!action) {
            return {};
        }
        found.push_back(std::move(action));
    }
    return found;
}

} // namespace scene
