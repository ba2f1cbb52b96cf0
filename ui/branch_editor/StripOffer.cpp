#include "ui/branch_editor/StripOffer.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "core/Texts.h"
#include "edit/History.h"
#include "scene/Action.h"
#include "scene/SceneChange.h"
#include "scene/SceneSession.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

namespace {

bool hasBranch(const scene::SceneSession& session, const std::string& name) {
    const std::vector<std::string> names = session.branchNames();
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

StripOffer removalOffer(const scene::SceneSession& session, const std::string& name,
                        std::function<void()> undo) {
    std::u16string sentence = core::tr("Branch \"{0}\" removed."_tr, name);
    const std::size_t count = hasBranch(session, name) ? 0 : session.actionsLeadingTo(name).size();
    if (count > 0) {
        sentence += u" " + core::tr("{0} action named it.|{0} actions named it."_trn, count);
    }
    const auto text = [&session, revision = session.revision(), sentence]() {
        return session.revision() == revision ? sentence : std::u16string();
    };
    return {text, {{branch_list::kNoticeUndoButton, std::move(undo)}}};
}

StripOffer renameOffer(scene::SceneSession& session, int branch, const std::string& oldName) {
    const scene::SceneSession::BranchToken renamed = session.token(branch);
    const auto text = [&session, renamed, oldName]() -> std::u16string {
        const std::size_t count = session.actionsLeadingTo(oldName).size();
        const int now = session.find(renamed);
        if (count == 0 || now < 0 || session.branchName(now).empty() ||
            hasBranch(session, oldName)) {
            return {};
        }
        return core::tr("{0} action still names \"{1}\".|{0} actions still name \"{1}\"."_trn,
                        count, oldName);
    };
    const auto update = [&session, renamed, oldName] {
        session.retarget(oldName, session.branchName(session.find(renamed)));
    };
    return {text, {{branch_list::kRetargetButton, update}}};
}

StripOffer zoneRenameOffer(scene::SceneSession& session, const std::string& video,
                           std::vector<app_state::ScreenResult::Rename> renames) {
    const app_state::ScreenResult::Rename rename = renames.back();
    renames.pop_back();
    const auto text = [&session, video, rename]() -> std::u16string {
        const std::size_t count = session.actionsWaitingFor(video, rename.from).size();
        return count == 0 ? std::u16string()
                          : core::tr("{0} action still names the zone \"{1}\".|"
                                     "{0} actions still name the zone \"{1}\"."_trn,
                                     count, rename.from);
    };
    const auto update = [&session, video, rename] {
        session.renameZone(video, rename.from, rename.to);
    };
    StripOffer offer{text, {{branch_list::kRetargetButton, update}}};
    if (!renames.empty()) {
        offer.next = [&session, video, renames = std::move(renames)] {
            return zoneRenameOffer(session, video, renames);
        };
    }
    return offer;
}

StripOffer targetOffer(scene::SceneSession& session, int branch, int action,
                       std::function<void()> chooseOther) {
    const scene::SceneSession::BranchToken token = session.token(branch);
    const std::string name = session.action(branch, action).BranchID();
    const auto text = [&session, token, action, name]() -> std::u16string {
        const int now = session.find(token);
        const std::vector<std::string> names = session.branchNames();
        if (now < 0 || action >= session.actionCount(now) ||
            session.action(now, action).BranchID() != name ||
            std::find(names.begin(), names.end(), name) != names.end()) {
            return {};
        }
        return core::tr("Action {0} leads to \"{1}\", which is not in the scene."_tr, action + 1,
                        name);
    };
    const auto add = [&session, name] {
        const int added = session.branchCount();
        auto gesture = session.begin({scene::SceneStep::addBranch, added});
        session.addBranch();
        session.renameBranch(added, name);
        gesture.commit();
    };
    return {.text = text,
            .answers = {{branch_list::kFixButton, add},
                        {branch_list::kFixOtherButton, std::move(chooseOther)}},
            .fix = core::tr("AddNamed|Add \"{0}\""_tr, name),
            .isFault = true,
            .isRemedy = true};
}

} // namespace ui
