// An offer in the strip: a sentence about the scene and buttons that act on it. It stays until one
// of them is pressed, it is closed, or it is no longer true. Used by the branch editor.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/state/ScreenState.h"

namespace scene {
class SceneSession;
}

namespace ui {

struct StripOffer {
    /// Asked again after each change of the scene; empty once the offer is no longer true.
    std::function<std::u16string()> text;
    /// The buttons to show, of those in the strip, and what each does.
    std::vector<std::pair<std::u16string_view, std::function<void()>>> answers;
    /// What the first of the buttons says; empty: as in the layout.
    std::u16string fix{};
    /// Makes the offer that comes when this one is over, however it ends; empty for none.
    std::function<StripOffer()> next{};
    bool isFault = false;       ///< something is wrong
    bool coversProblem = false; ///< it says what the problem on show says, and offers more
    bool isRemedy = false;      ///< of a finding, until another one is chosen
};

/// To bring back the branch `name`, which has just been removed: until the next step.
[[nodiscard]] StripOffer removalOffer(const scene::SceneSession& session, const std::string& name,
                                      std::function<void()> undo);

/// To have the actions that name a renamed branch by its old name lead to it again. The session
/// outlives the offer.
[[nodiscard]] StripOffer renameOffer(scene::SceneSession& session, int branch,
                                     const std::string& oldName);

/// The same for the actions that wait for renamed zones of a video, for the last of the names
/// first; `renames` is not empty.
[[nodiscard]] StripOffer zoneRenameOffer(scene::SceneSession& session, const std::string& video,
                                         std::vector<app_state::ScreenResult::Rename> renames);

/// To add the branch that an action leads to and that the scene does not have, or to have the
/// action lead elsewhere. The session outlives the offer.
[[nodiscard]] StripOffer targetOffer(scene::SceneSession& session, int branch, int action,
                                     std::function<void()> chooseOther);

} // namespace ui
