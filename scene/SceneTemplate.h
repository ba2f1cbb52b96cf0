// What a new scene begins with. Main thread only.
#pragma once

namespace scene {

class SceneManager;

struct SceneTemplate {
    enum class Kind {
        empty,
        linear,  ///< "Step 1", "Step 2", ..., each leading to the next
        question ///< "Question", which keys A, B, ... answer, and "Answer 1", "Answer 2", ...
    };
    static constexpr int kLeast = 2;
    static constexpr int kMost = 12;

    Kind kind = Kind::empty;
    int count = kLeast; ///< of steps or answers, kLeast to kMost
};

/// Adds the template's branches to `scene`, which has none. The names are English everywhere: they
/// are the author's to change.
void addTemplate(SceneManager& scene, const SceneTemplate& start);

} // namespace scene
