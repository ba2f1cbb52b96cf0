// The edits of SceneSession: each builds its operations and runs them as one step.
#include <algorithm>
#include <functional>
#include <memory>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "edit/History.h"
#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneChange.h"
#include "scene/SceneManager.h"
#include "scene/SceneOperations.h"
#include "scene/SceneSession.h"

namespace scene {

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
    const int original = step == SceneStep::duplicateBranch ? index - 1 : -1;
    auto gesture = m_history.begin({step, index, -1, original});
    if (branchCount() == 0 && m_scene->FirstBranch() != branch->ID()) {
        gesture.run(SwapFirstBranch{branch->ID()});
    }
    gesture.run(PlaceBranch{index, std::move(branch), false});
    gesture.commit();
    return true;
}

std::string SceneSession::nameOfCopy(const std::string& original) const {
    for (int number = 2;; ++number) {
        std::string name = original + " " + std::to_string(number);
        if (!hasBranch(name)) {
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
    if (m_scene->FirstBranch() == removed->ID() && !hasBranch(removed->ID())) {
        const int heir = std::min(branch, branchCount() - 1);
        gesture.run(SwapFirstBranch{heir >= 0 ? branchName(heir) : ""});
    }
    gesture.commit();
    return true;
}

bool SceneSession::moveBranch(int from, int to) {
    if (from == to || !branchAt(from) || !branchAt(to)) {
        return false;
    }
    m_history.run({SceneStep::moveBranch, to, -1, from}, MoveBranch{from, to});
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

bool SceneSession::addVideos(const std::vector<std::string>& names) {
    std::vector<std::string> all = m_scene->addedVideos();
    for (const std::string& name : names) {
        if (std::find(all.begin(), all.end(), name) == all.end()) {
            all.push_back(name);
        }
    }
    if (all.size() == m_scene->addedVideos().size()) {
        return false;
    }
    m_history.run({SceneStep::addVideo}, SwapAddedVideos{std::move(all)});
    return true;
}

bool SceneSession::addAction(int branch) {
    const std::shared_ptr<Branch> owner = branchAt(branch);
    std::shared_ptr<Action> action = Action::create();
    if (!owner || !action) {
        m_scene->addAction(branch, nullptr);
        return false;
    }
    const int end = owner->actionCount();
    m_history.run({SceneStep::addAction, branch, end},
                  PlaceAction{branch, end, std::move(action), false});
    return true;
}

bool SceneSession::duplicateActions(int branch, std::vector<int> actions) {
    const auto originals = actionsAt(branch, actions);
    if (originals.empty()) {
        return false;
    }
    int place = actions.back() + 1;
    std::vector<int> copies(actions.size());
    std::iota(copies.begin(), copies.end(), place);
    auto gesture = m_history.begin(
        {SceneStep::duplicateAction, branch, place, actions.front(), std::move(copies), actions});
    for (const auto& original : originals) {
        gesture.run(PlaceAction{branch, place++, std::make_shared<Action>(*original), false});
    }
    gesture.commit();
    return true;
}

bool SceneSession::removeAction(int branch, int action) {
    if (!actionAt(branch, action)) {
        m_scene->removeAction(branch, action);
        return false;
    }
    return removeActions(branch, {action});
}

bool SceneSession::removeActions(int branch, std::vector<int> actions) {
    auto removed = actionsAt(branch, actions);
    if (removed.empty()) {
        return false;
    }
    auto gesture =
        m_history.begin({SceneStep::removeAction, branch, actions.front(), -1, {}, actions});
    for (; !removed.empty(); removed.pop_back(), actions.pop_back()) {
        gesture.run(PlaceAction{branch, actions.back(), removed.back(), true});
    }
    gesture.commit();
    return true;
}

bool SceneSession::shiftActions(int branch, std::vector<int> actions, int by) {
    if (actionsAt(branch, actions).empty() || by == 0 || !actionAt(branch, actions.front() + by) ||
        !actionAt(branch, actions.back() + by)) {
        return false;
    }
    std::vector<int> moved = actions;
    for (int& action : moved) {
        action += by;
    }
    const int first = actions.front();
    auto gesture = m_history.begin(
        {SceneStep::moveAction, branch, first + by, first, std::move(moved), actions});
    if (by > 0) { // each moves to where none that is still to move stands
        std::reverse(actions.begin(), actions.end());
    }
    for (const int action : actions) {
        gesture.run(MoveAction{branch, action, action + by});
    }
    gesture.commit();
    return true;
}

bool SceneSession::moveAction(int branch, int from, int to) {
    if (from == to || !actionAt(branch, from) || !actionAt(branch, to)) {
        return false;
    }
    m_history.run({SceneStep::moveAction, branch, to, from}, MoveAction{branch, from, to});
    return true;
}

bool SceneSession::change(SceneStep step, int branch, int action, Action contents) {
    const std::shared_ptr<Action> changed = actionAt(branch, action);
    if (!changed || *changed == contents) {
        return false;
    }
    m_history.run({step, branch, action}, SwapActions{{{branch, action, std::move(contents)}}});
    return true;
}

bool SceneSession::changeAll(SceneStep step, const std::vector<ActionPlace>& places,
                             const std::function<void(Action&)>& edit) {
    SwapActions swap;
    for (const auto& [branch, action] : places) {
        swap.actions.push_back({branch, action, this->action(branch, action)});
        edit(swap.actions.back().contents);
    }
    if (swap.actions.empty()) {
        return false;
    }
    const auto [branch, first] = places.front(); // the one that undo and redo show
    std::vector<int> actions;
    for (const ActionPlace& place : places) {
        if (place.branch == branch) {
            actions.push_back(place.action);
        }
    }
    m_history.run({step, branch, first, -1, actions, actions}, std::move(swap));
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

bool SceneSession::retarget(const std::string& from, const std::string& to) {
    return from != to && changeAll(SceneStep::target, actionsLeadingTo(from),
                                   [&](Action& action) { action.SetBranchID(to); });
}

bool SceneSession::renameZone(const std::string& video, const std::string& from,
                              const std::string& to) {
    return from != to && changeAll(SceneStep::parameter, actionsWaitingFor(video, from),
                                   [&](Action& action) { action.SetParameter(to); });
}

} // namespace scene
