// What is wrong with single names: those that make a file unreadable, because scene and zone files
// write them unescaped, and those that are easily taken for each other.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "check/Finding.h"

namespace scene {
class SceneManager;
}

namespace check {

/// Why a name will not be read back. The numbers are those of the texts of unreadableName.
enum class NameFault { lessThan, entity, control };

/// Empty for a name that reads back as it is.
[[nodiscard]] std::optional<NameFault> faultOf(std::string_view name);
/// Whether a file with this text could not be read again.
[[nodiscard]] bool breaksFile(std::string_view text);

/// Equal for names that differ in case or blanks only. Knows the letters of European languages.
[[nodiscard]] std::string foldedName(std::string_view name);

/// The first name that will not be read back, in file order: the scene's, the first branch's, a
/// branch's, a video's, a parameter or a target. Empty if there is none.
[[nodiscard]] std::optional<Finding> firstUnreadableName(const scene::SceneManager& scene);
/// Whether that branch has one. False if there is no such branch.
[[nodiscard]] bool hasUnreadableName(const scene::SceneManager& scene, int branch);

} // namespace check
