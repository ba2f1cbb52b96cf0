#include "ui/branch_editor/StripOffer.h"

#include <algorithm>
#include <cstddef>

#include "core/Text.h"
#include "scene/SceneSession.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

StripOffer renameOffer(scene::SceneSession& session, int branch, const std::string& oldName) {
    const scene::SceneSession::BranchToken renamed = session.token(branch);
    const auto text = [&session, renamed, oldName]() -> std::u16string {
        const std::vector<std::string> names = session.branchNames();
        const std::size_t count = session.actionsLeadingTo(oldName).size();
        if (count == 0 || session.find(renamed) < 0 ||
            std::find(names.begin(), names.end(), oldName) != names.end()) {
            return {};
        }
        const char* const sentence =
            count == 1 ? " action still names \"" : " actions still name \"";
        return core::displayText(std::to_string(count) + sentence + oldName + "\".");
    };
    const auto update = [&session, renamed, oldName] {
        session.retarget(oldName, session.branchName(session.find(renamed)));
    };
    return {text, {{branch_list::kRetargetButton, update}}};
}

} // namespace ui
