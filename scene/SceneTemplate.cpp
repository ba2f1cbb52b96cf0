#include "scene/SceneTemplate.h"

#include <algorithm>
#include <memory>
#include <string>

#include "scene/Action.h"
#include "scene/SceneManager.h"

namespace scene {
namespace {

void addBranch(SceneManager& scene, const std::string& name) {
    if (scene.AddBranch()) {
        scene.renameBranch(scene.branchCount() - 1, name);
    }
}

void addAction(SceneManager& scene, int branch, const std::string& key, const std::string& target) {
    if (const std::shared_ptr<Action> action = Action::create()) {
        action->SetType(key.empty() ? Action::kDefaultAction : Action::kKeypressAction);
        action->SetParameter(key);
        action->SetBranchID(target);
        scene.addAction(branch, action);
    }
}

std::string numbered(const char* name, int number) {
    return name + (" " + std::to_string(number));
}

void addSteps(SceneManager& scene, int count) {
    for (int number = 1; number <= count; ++number) {
        addBranch(scene, numbered("Step", number));
        if (number < count) {
            addAction(scene, number - 1, {}, numbered("Step", number + 1));
        }
    }
}

void addQuestion(SceneManager& scene, int count) {
    addBranch(scene, "Question");
    for (int number = 1; number <= count; ++number) {
        const std::string answer = numbered("Answer", number);
        addBranch(scene, answer);
        addAction(scene, 0, std::string(1, static_cast<char>('A' + number - 1)), answer);
    }
    addAction(scene, 0, {}, "Question"); // asked again until it is answered
}

} // namespace

void addTemplate(SceneManager& scene, const SceneTemplate& start) {
    const int count = std::clamp(start.count, SceneTemplate::kLeast, SceneTemplate::kMost);
    if (start.kind == SceneTemplate::Kind::linear) {
        addSteps(scene, count);
    } else if (start.kind == SceneTemplate::Kind::question) {
        addQuestion(scene, count);
    }
}

} // namespace scene
