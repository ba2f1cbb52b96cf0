#include "playback/SceneStory.h"

#include <string>
#include <utility>

#include "scene/Action.h"

namespace playback {
namespace {

player::Action::When whenOf(int type) {
    switch (type) {
    case scene::Action::kKeypressAction:
        return player::Action::When::keyPressed;
    case scene::Action::kZoneAction:
        return player::Action::When::zoneClicked;
    case scene::Action::kRandomAction:
        return player::Action::When::byChance;
    default:
        return player::Action::When::clipEnds;
    }
}

} // namespace

SceneStory::SceneStory(const scene::SceneSession& session) {
    m_story.first = session.firstBranch();
    for (int branch = 0; branch < session.branchCount(); ++branch) {
        player::Branch copy{session.branchName(branch), session.video(branch), {}};
        for (const scene::Action& action : session.actions(branch)) {
            copy.actions.push_back(
                {whenOf(action.Type()), action.Parameter(), action.BranchID(), action.Immediate()});
        }
        m_story.branches.push_back(std::move(copy));
        m_tokens.push_back(session.token(branch));
    }
}

std::vector<int> SceneStory::movedTo(const scene::SceneSession& session) const {
    std::vector<int> places;
    for (const scene::SceneSession::BranchToken& token : m_tokens) {
        places.push_back(session.find(token));
    }
    return places;
}

} // namespace playback
