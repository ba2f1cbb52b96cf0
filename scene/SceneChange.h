// What the session of a scene tells its listeners, and how it names its steps.
#pragma once

namespace scene {

/// A part of the scene that may differ now. Changes of a moment ago name branches by the numbers
/// they had then: with Part::branches among the changes, read all again.
struct SceneChange {
    enum class Part {
        scene,       ///< another scene, or a new one
        branches,    ///< how many there are, and their order
        branchName,  ///< of `branch`
        video,       ///< of `branch`
        actions,     ///< of `branch`
        firstBranch, ///< the name of the branch that plays first
    };

    Part part = Part::scene;
    int branch = -1; ///< -1 where no branch is meant

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
};

/// A step's name in English and small letters ("move action"), which is also the key under which it
/// is translated.
[[nodiscard]] const char* stepName(SceneStep step);

/// A step and where it happened: what undo and redo have to show.
struct SceneLabel {
    SceneStep step = SceneStep::addBranch;
    int branch = -1;
    int action = -1; ///< -1 where no action is meant
};

} // namespace scene
