#include "scene/SceneOperations.h"

#include <utility>

namespace scene {
namespace {

std::size_t bytesOf(const Action& action) {
    return sizeof(action) + action.Parameter().capacity() + action.BranchID().capacity();
}

std::size_t bytesOf(Branch& branch) {
    std::size_t sum = sizeof(branch) + branch.ID().capacity() + branch.Filename().capacity();
    for (const auto& action : branch.actions()) {
        sum += bytesOf(*action);
    }
    return sum;
}

} // namespace

std::size_t SwapAddedVideos::bytes() const {
    std::size_t sum = sizeof(*this);
    for (const std::string& name : names) {
        sum += sizeof(name) + name.capacity();
    }
    return sum;
}

std::size_t SwapContents::bytes() const {
    std::size_t sum = sizeof(*this) + firstBranch.capacity();
    for (const auto& branch : branches) {
        sum += bytesOf(*branch);
    }
    return sum;
}

void PlaceBranch::place(SceneManager& scene, bool in) const {
    if (in) {
        scene.branches()->insertBranch(index, branch);
    } else {
        scene.branches()->removeBranch(index);
    }
}

std::size_t PlaceBranch::bytes() const {
    return sizeof(*this) + bytesOf(*branch);
}

void PlaceAction::place(SceneManager& scene, bool in) const {
    const std::shared_ptr<Branch> owner = scene.branches()->branch(branch);
    if (in) {
        owner->insertAction(index, action);
    } else {
        owner->removeAction(index);
    }
}

std::size_t PlaceAction::bytes() const {
    return sizeof(*this) + bytesOf(*action);
}

void SwapActions::apply(SceneManager& scene) noexcept {
    for (One& one : actions) {
        std::swap(*scene.branches()->branch(one.branch)->action(one.index), one.contents);
    }
}

SceneChanges SwapActions::changes() const {
    const int branch = actions.front().branch;
    const bool isOne = actions.back().branch == branch; // they are in the order of the scene
    return {{SceneChange::Part::actions, isOne ? branch : -1}};
}

std::size_t SwapActions::bytes() const {
    std::size_t sum = sizeof(*this);
    for (const One& one : actions) {
        sum += sizeof(one) + bytesOf(one.contents);
    }
    return sum;
}

} // namespace scene
