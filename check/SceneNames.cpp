#include "check/SceneNames.h"

#include <memory>
#include <string>

#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneManager.h"

namespace check {
namespace {

std::optional<Finding> checkBranch(const scene::Branch& branch, int number) {
    for (const std::string* text : {&branch.ID(), &branch.Filename()}) {
        if (breaksFile(*text)) {
            return Finding{.branch = number, .arguments = {*text}};
        }
    }
    for (int action = 0; action < branch.actionCount(); ++action) {
        const std::shared_ptr<const scene::Action> checked = branch.action(action);
        for (const std::string* text : {&checked->Parameter(), &checked->BranchID()}) {
            if (breaksFile(*text)) {
                return Finding{
                    .branch = number, .action = action, .arguments = {*text, branch.ID()}};
            }
        }
    }
    return std::nullopt;
}

} // namespace

bool breaksFile(std::string_view text) {
    return text.find('<') != std::string_view::npos;
}

std::optional<Finding> firstUnreadableName(const scene::SceneManager& scene) {
    for (const std::string* text : {&scene.Name(), &scene.FirstBranch()}) {
        if (breaksFile(*text)) {
            return Finding{.arguments = {*text}};
        }
    }
    const scene::BranchManager* branches = scene.branches();
    for (int branch = 0; branches != nullptr && branch < branches->branchCount(); ++branch) {
        if (auto found = checkBranch(*branches->branch(branch), branch)) {
            return found;
        }
    }
    return std::nullopt;
}

bool hasUnreadableName(const scene::SceneManager& scene, int branch) {
    const scene::BranchManager* branches = scene.branches();
    const auto checked = branches != nullptr ? branches->branch(branch) : nullptr;
    return checked && checkBranch(*checked, branch);
}

} // namespace check
