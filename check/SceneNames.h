// Names that keep the file they are written into from being read again: both formats write them as
// they are.
#pragma once

#include <optional>
#include <string_view>

#include "check/Finding.h"

namespace scene {
class SceneManager;
}

namespace check {

/// True for a text that breaks a scene or zone file.
[[nodiscard]] bool breaksFile(std::string_view text);

/// The first name in the order of the file that breaks it: the scene's own, the first branch's, a
/// branch's, a video's, a parameter or a target. Empty when the scene reads back.
[[nodiscard]] std::optional<Finding> firstUnreadableName(const scene::SceneManager& scene);

} // namespace check
