#include "map/MapScene.h"

#include <memory>
#include <string>
#include <unordered_map>

#include "core/Texts.h"
#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneManager.h"

namespace map {
namespace {

using scene::Action;
using Numbers = std::unordered_map<std::string, int>;

int randomActions(const scene::Branch& branch) {
    int count = 0;
    for (int i = 0; i < branch.actionCount(); ++i) {
        count += branch.peekAction(i)->Type() == Action::kRandomAction ? 1 : 0;
    }
    return count;
}

std::string textOf(const Action& action, int randomActions) {
    switch (action.Type()) {
    case Action::kKeypressAction:
        return core::trStored("MapKey|Key {0}"_tr, {action.Parameter()});
    case Action::kZoneAction:
        return action.Parameter();
    case Action::kRandomAction:
        return randomActions > 1
                   ? core::trStored("RandomShare|Random {0} %"_tr, {100 / randomActions})
                   : core::trStored("Random"_tr);
    default:
        return core::trStored("Default"_tr);
    }
}

MapBranch readBranch(const scene::Branch& branch, const Numbers& numbers) {
    MapBranch result{branch.ID(), branch.Filename(), {}};
    const int chances = randomActions(branch);
    for (int i = 0; i < branch.actionCount(); ++i) {
        const Action& action = *branch.peekAction(i);
        const auto target = numbers.find(action.BranchID());
        result.actions.push_back(
            {action.Type(), textOf(action, chances), action.BranchID(),
             target != numbers.end() ? target->second : -1, action.Immediate(),
             action.Type() == Action::kKeypressAction ? action.Parameter() : std::string()});
    }
    return result;
}

} // namespace

MapScene readMap(const scene::SceneManager& scene) {
    MapScene map;
    const scene::BranchManager* branches = scene.branches();
    Numbers numbers;
    for (int i = 0; i < scene.branchCount(); ++i) {
        numbers.emplace(scene.branchID(i), i);
    }
    for (int i = 0; branches != nullptr && i < scene.branchCount(); ++i) {
        map.branches.push_back(readBranch(*branches->branch(i), numbers));
    }
    const auto first = numbers.find(scene.FirstBranch());
    map.first = first != numbers.end() ? first->second : -1;
    return map;
}

} // namespace map
