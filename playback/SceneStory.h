// A scene as the player takes it, and where the branches of one that is edited have gone since.
#pragma once

#include <vector>

#include "player/Story.h"
#include "scene/SceneSession.h"

namespace scene {
class SceneManager;
}

namespace playback {

/// The scene as it is now.
[[nodiscard]] player::Story storyOf(const scene::SceneManager& scene);

/// A scene as it was at one moment. UI thread only.
class SceneStory {
public:
    explicit SceneStory(const scene::SceneSession& session);

    [[nodiscard]] const player::Story& story() const { return m_story; }
    /// For each of its branches, the number in the scene now; -1 for one that is gone.
    [[nodiscard]] std::vector<int> movedTo(const scene::SceneSession& session) const;

private:
    player::Story m_story;
    std::vector<scene::SceneSession::BranchToken> m_tokens;
};

} // namespace playback
