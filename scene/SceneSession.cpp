#include "scene/SceneSession.h"

#include <algorithm>
#include <cstddef>
#include <new>

#include "scene/Branch.h"
#include "scene/BranchManager.h"

namespace scene {

std::shared_ptr<SceneSession> SceneSession::create(std::shared_ptr<SceneManager> scene) {
    try {
        return scene ? std::make_shared<SceneSession>(std::move(scene)) : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

SceneSession::SceneSession(std::shared_ptr<SceneManager> scene, edit::Limits limits)
    : m_scene(std::move(scene)), m_history(*m_scene, limits), m_savedText(m_scene->fileText()) {}

bool SceneSession::load(const std::string& name) {
    const bool good = m_scene->Load(name);
    opened(false);
    return good;
}

bool SceneSession::newScene(const std::string& name) {
    const bool good = m_scene->newScene(name);
    if (good) {
        opened(true);
    }
    return good;
}

void SceneSession::opened(bool isNew) {
    m_isNew = isNew;
    m_savedText = m_scene->fileText();
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

std::shared_ptr<Branch> SceneSession::branchAt(int index) const {
    BranchManager* branches = m_scene->branches();
    return branches != nullptr ? branches->branch(index) : nullptr;
}

std::shared_ptr<Action> SceneSession::actionAt(int branch, int action) const {
    const std::shared_ptr<Branch> owner = branchAt(branch);
    return owner ? owner->action(action) : nullptr;
}

bool SceneSession::addBranch() {
    BranchManager* branches = m_scene->branches();
    if (branches == nullptr) {
        return m_scene->AddBranch(); // logs why
    }
    return insertBranch(SceneStep::addBranch, branches->branchCount(), branches->makeBranch());
}

bool SceneSession::insertBranch(SceneStep step, int index, std::shared_ptr<Branch> branch) {
    if (!branch) {
        return false;
    }
    auto gesture = m_history.begin({step, index});
    if (branchCount() == 0 && m_scene->FirstBranch() != branch->ID()) {
        gesture.run(SwapFirstBranch{branch->ID()});
    }
    gesture.run(PlaceBranch{index, std::move(branch), false});
    gesture.commit();
    return true;
}

std::string SceneSession::nameOfCopy(const std::string& original) const {
    const std::vector<std::string> names = branchNames();
    for (int number = 2;; ++number) {
        std::string name = original + " " + std::to_string(number);
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            return name;
        }
    }
}

bool SceneSession::duplicateBranch(int branch) {
    const std::shared_ptr<Branch> original = branchAt(branch);
    std::shared_ptr<Branch> copy = original ? Branch::create() : nullptr;
    if (!copy) {
        return false;
    }
    copy->SetID(nameOfCopy(original->ID()));
    copy->SetFilename(original->Filename());
    for (const auto& action : original->actions()) {
        copy->addAction(std::make_shared<Action>(*action));
    }
    return insertBranch(SceneStep::duplicateBranch, branch + 1, std::move(copy));
}

bool SceneSession::removeBranch(int branch) {
    const std::shared_ptr<Branch> removed = branchAt(branch);
    if (!removed) {
        return false;
    }
    auto gesture = m_history.begin({SceneStep::removeBranch, branch});
    gesture.run(PlaceBranch{branch, removed, true});
    const std::vector<std::string> names = branchNames();
    const bool isNamed = std::find(names.begin(), names.end(), removed->ID()) != names.end();
    if (!isNamed && m_scene->FirstBranch() == removed->ID()) {
        const int heir = std::min(branch, static_cast<int>(names.size()) - 1);
        gesture.run(SwapFirstBranch{heir >= 0 ? names[static_cast<std::size_t>(heir)] : ""});
    }
    gesture.commit();
    return true;
}

bool SceneSession::moveBranch(int from, int to) {
    if (from == to || !branchAt(from) || !branchAt(to)) {
        return false;
    }
    m_history.run({SceneStep::moveBranch, to}, MoveBranch{from, to});
    return true;
}

bool SceneSession::renameBranch(int branch, const std::string& name) {
    const std::shared_ptr<Branch> renamed = branchAt(branch);
    if (!renamed) {
        m_scene->renameBranch(branch, name);
        return false;
    }
    if (renamed->ID() == name) {
        return false;
    }
    auto gesture = m_history.begin({SceneStep::rename, branch});
    if (m_scene->FirstBranch() == renamed->ID()) {
        gesture.run(SwapFirstBranch{name});
    }
    gesture.run(SwapName{branch, name});
    gesture.commit();
    return true;
}

bool SceneSession::setFirstBranch(const std::string& name) {
    if (m_scene->FirstBranch() == name) {
        return false;
    }
    const std::vector<std::string> names = branchNames();
    const auto found = std::find(names.begin(), names.end(), name);
    const int branch = found == names.end() ? -1 : static_cast<int>(found - names.begin());
    m_history.run({SceneStep::firstBranch, branch}, SwapFirstBranch{name});
    return true;
}

bool SceneSession::setVideo(int branch, const std::string& name) {
    const std::shared_ptr<Branch> changed = branchAt(branch);
    if (!changed) {
        m_scene->setBranchFilename(branch, name);
        return false;
    }
    if (changed->Filename() == name) {
        return false;
    }
    m_history.run({SceneStep::video, branch}, SwapVideo{branch, name});
    return true;
}

void SceneSession::insertAction(SceneStep step, int branch, int index,
                                std::shared_ptr<Action> action) {
    m_history.run({step, branch, index}, PlaceAction{branch, index, std::move(action), false});
}

bool SceneSession::addAction(int branch) {
    const std::shared_ptr<Branch> owner = branchAt(branch);
    std::shared_ptr<Action> action = Action::create();
    if (!owner || !action) {
        m_scene->addAction(branch, nullptr);
        return false;
    }
    insertAction(SceneStep::addAction, branch, owner->actionCount(), std::move(action));
    return true;
}

bool SceneSession::duplicateAction(int branch, int action) {
    const std::shared_ptr<Action> original = actionAt(branch, action);
    if (!original) {
        return false;
    }
    insertAction(SceneStep::duplicateAction, branch, action + 1,
                 std::make_shared<Action>(*original));
    return true;
}

bool SceneSession::removeAction(int branch, int action) {
    const std::shared_ptr<Action> removed = actionAt(branch, action);
    if (!removed) {
        m_scene->removeAction(branch, action);
        return false;
    }
    m_history.run({SceneStep::removeAction, branch, action},
                  PlaceAction{branch, action, removed, true});
    return true;
}

bool SceneSession::moveAction(int branch, int from, int to) {
    if (from == to || !actionAt(branch, from) || !actionAt(branch, to)) {
        return false;
    }
    m_history.run({SceneStep::moveAction, branch, to}, MoveAction{branch, from, to});
    return true;
}

bool SceneSession::change(SceneStep step, int branch, int action, Action contents) {
    const std::shared_ptr<Action> changed = actionAt(branch, action);
    if (!changed || *changed == contents) {
        return false;
    }
    m_history.run({step, branch, action}, SwapAction{branch, action, std::move(contents)});
    return true;
}

bool SceneSession::setType(int branch, int action, int type) {
    Action contents = this->action(branch, action);
    contents.SetType(type);
    return change(SceneStep::condition, branch, action, std::move(contents));
}

bool SceneSession::setParameter(int branch, int action, const std::string& parameter) {
    Action contents = this->action(branch, action);
    contents.SetParameter(parameter);
    return change(SceneStep::parameter, branch, action, std::move(contents));
}

bool SceneSession::setTarget(int branch, int action, const std::string& branchName) {
    Action contents = this->action(branch, action);
    contents.SetBranchID(branchName);
    return change(SceneStep::target, branch, action, std::move(contents));
}

bool SceneSession::setImmediate(int branch, int action, bool immediate) {
    Action contents = this->action(branch, action);
    contents.SetImmediate(immediate);
    return change(SceneStep::immediate, branch, action, std::move(contents));
}

} // namespace scene
