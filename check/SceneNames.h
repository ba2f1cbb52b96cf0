// Names that make a scene or zone file unreadable, because both formats write them unescaped.
#pragma once

#include <optional>
#include <string_view>

#include "check/Finding.h"

namespace scene {
class SceneManager;
}

namespace check {

/// Whether a file with this text could not be read again.
[[nodiscard]] bool breaksFile(std::string_view text);

/// The first such name in file order: the scene's, the first branch's, a branch's, a video's, a
/// parameter or a target. Empty if there is none.
[[nodiscard]] std::optional<Finding> firstUnreadableName(const scene::SceneManager& scene);
/// Whether that branch has one. False if there is no such branch.
[[nodiscard]] bool hasUnreadableName(const scene::SceneManager& scene, int branch);

} // namespace check
