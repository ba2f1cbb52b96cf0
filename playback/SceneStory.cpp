#include "playback/SceneStory.h"

#include <memory>
#include <utility>

#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneManager.h"

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

player::Story storyOf(const scene::SceneManager& scene) {
    player::Story story{scene.FirstBranch(), {}};
    for (int number = 0; number < scene.branchCount(); ++number) {
        const std::shared_ptr<const scene::Branch> branch = scene.branches()->branch(number);
        player::Branch copy{branch->ID(), branch->Filename(), {}};
        for (int row = 0; row < branch->actionCount(); ++row) {
            const scene::Action& action = *branch->peekAction(row);
            copy.actions.push_back(
                {whenOf(action.Type()), action.Parameter(), action.BranchID(), action.Immediate()});
        }
        story.branches.push_back(std::move(copy));
    }
    return story;
}

SceneStory::SceneStory(const scene::SceneSession& session) : m_story(storyOf(session.scene())) {
    for (int branch = 0; branch < session.branchCount(); ++branch) {
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
