// What a scene's session reports to its listeners, and how it names its steps.
#pragma once

#include <string>
#include <vector>

namespace scene {

/// A part of the scene that may have changed. Branch numbers are those at the time of the edit: if
/// Part::branches is among the changes, read everything again, and ask SceneSession::find where a
/// branch is now.
struct SceneChange {
    enum class Part {
        scene,       ///< everything: another scene, a new one, or another version of it
        branches,    ///< how many there are, and their order
        branchName,  ///< of `branch`
        video,       ///< of `branch`
        actions,     ///< of `branch`; of any branch if that is -1
        addedVideos, ///< those that no branch may have yet
        firstBranch, ///< the name of the branch that plays first
    };

    Part part = Part::scene;
    int branch = -1; ///< -1 if it is about no branch

    friend bool operator==(const SceneChange&, const SceneChange&) = default;
};

enum class SceneStep {
    addBranch,
    duplicateBranch,
    removeBranch,
    moveBranch,
    rename,
    firstBranch,
    video,
    addAction,
    duplicateAction,
    removeAction,
    moveAction,
    condition,
    parameter,
    target,
    immediate,
    restoreVersion,
    addVideo,
};

/// A step's name as shown, in small letters: "move action".
[[nodiscard]] std::string stepName(SceneStep step);

/// A step and where it happened, so that undo and redo can show it.
struct SceneLabel {
    SceneStep step = SceneStep::addBranch;
    int branch = -1; ///< -1 if it is about no branch
    int action = -1; ///< -1 if it is about no action
    int from = -1;   ///< where the moved branch or action was before, or the copied one is
    // Of a step on several actions of the branch.
    std::vector<int> actions{};       ///< where they are after it; none if it removed them
    std::vector<int> actionsBefore{}; ///< where they, or those that were copied, were before it
};

} // namespace scene
