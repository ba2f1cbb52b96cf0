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

void SwapAction::apply(SceneManager& scene) noexcept {
    std::swap(*scene.branches()->branch(branch)->action(index), contents);
}

std::size_t SwapAction::bytes() const {
    return sizeof(*this) + bytesOf(contents);
}

void SwapTargets::apply(SceneManager& scene) noexcept {
    for (Target& target : targets) {
        scene.branches()->branch(target.branch)->action(target.action)->swapBranchID(target.name);
    }
}

std::size_t SwapTargets::bytes() const {
    std::size_t sum = sizeof(*this);
    for (const Target& target : targets) {
        sum += sizeof(target) + target.name.capacity();
    }
    return sum;
}

} // namespace scene
