// An offer in the strip: a sentence about the scene and buttons that act on it. It stays until one
// of them is pressed, it is closed, or it is no longer true. Used by the branch editor.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scene {
class SceneSession;
}

namespace ui {

struct StripOffer {
    /// Asked again after each change of the scene; empty once the offer is no longer true.
    std::function<std::u16string()> text;
    /// The buttons to show, of those in the strip, and what each does.
    std::vector<std::pair<std::u16string_view, std::function<void()>>> answers;
};

/// To have the actions that name a renamed branch by its old name lead to it again. The session
/// outlives the offer.
[[nodiscard]] StripOffer renameOffer(scene::SceneSession& session, int branch,
                                     const std::string& oldName);

} // namespace ui
