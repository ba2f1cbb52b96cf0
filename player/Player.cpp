#include "player/Player.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <utility>

namespace player {
namespace {

using When = Action::When;
using Cause = Reason::Cause;

char lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char letter) { return lowered(letter); });
    return text;
}

bool isSameKey(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char left, char right) { return lowered(left) == lowered(right); });
}

Reason reasonOf(const Action& action) {
    return {action.when == When::keyPressed ? Cause::key : Cause::zone, action.parameter, 0, false};
}

} // namespace

Player::Player(Story story, ClipSource clips, std::uint32_t seed)
    : m_clips(std::move(clips)), m_chance(seed) {
    takeStory(std::move(story));
}

void Player::takeStory(Story story) {
    m_story = std::move(story);
    m_numbers.clear();
    for (const Branch& branch : m_story.branches) {
        m_numbers.emplace(branch.name, static_cast<int>(&branch - m_story.branches.data()));
    }
}

void Player::start(std::string_view name) {
    startOver(findBranch(name), std::string(name));
}

void Player::start(int branch) {
    const bool isThere = branch >= 0 && branch < static_cast<int>(m_story.branches.size());
    startOver(isThere ? branch : -1,
              isThere ? m_story.branches[static_cast<std::size_t>(branch)].name : std::string());
}

void Player::startOver(int branch, std::string name) {
    m_path.clear();
    m_stepsBefore = 0;
    enter(branch, std::move(name), {}, 0.0);
}

int Player::findBranch(std::string_view name) const {
    const auto found = m_numbers.find(name);
    return found != m_numbers.end() ? found->second : -1;
}

void Player::enter(int branch, std::string name, Reason reason, double seconds) {
    if (m_path.size() >= kMostSteps) {
        m_path.erase(m_path.begin());
        ++m_stepsBefore;
    }
    m_path.push_back({branch, std::move(name), std::move(reason), seconds});
    m_branch = branch >= 0 ? m_story.branches[static_cast<std::size_t>(branch)] : Branch{};
    show();
}

void Player::show() {
    m_waiting = -1;
    m_clip = nullptr;
    if (m_path.back().branch < 0 && m_branch.name.empty() && m_branch.video.empty()) {
        m_state = State::noBranch;
    } else if (m_branch.video.empty()) {
        m_state = State::noVideo;
    } else {
        m_clip = m_clips(m_branch.video);
        m_state = m_clip ? State::playing : State::unreadableClip;
    }
}

bool Player::press(std::string_view key, int frame) {
    for (int index : actionsOf(When::keyPressed)) {
        const Action& action = m_branch.actions[static_cast<std::size_t>(index)];
        if (isSameKey(action.parameter, key)) {
            return answer(index, reasonOf(action), frame);
        }
    }
    return false;
}

bool Player::click(platform::Point pixel, int frame) {
    for (int index : actionsOf(When::zoneClicked)) {
        const Action& action = m_branch.actions[static_cast<std::size_t>(index)];
        if (m_clip && isHit(*m_clip, action.parameter, frame, pixel)) {
            return answer(index, reasonOf(action), frame);
        }
    }
    return false;
}

bool Player::choose(int action, int frame) {
    if (action < 0 || action >= static_cast<int>(m_branch.actions.size())) {
        return false;
    }
    const Action& chosen = m_branch.actions[static_cast<std::size_t>(action)];
    const bool isPossible =
        chosen.when == When::keyPressed || (chosen.when == When::zoneClicked && m_clip &&
                                            hasActiveZone(*m_clip, chosen.parameter, frame));
    return isPossible && answer(action, reasonOf(chosen), frame);
}

bool Player::answer(int action, Reason reason, int frame) {
    if (m_state != State::playing) {
        return false;
    }
    const Action& chosen = m_branch.actions[static_cast<std::size_t>(action)];
    if (chosen.isImmediate) {
        reason.isImmediate = true;
        follow(Action(chosen), std::move(reason), frame);
    } else {
        m_waiting = action;
        m_waitingReason = std::move(reason);
    }
    return true;
}

void Player::clipEnded(int frame) {
    if (m_state != State::playing) {
        return;
    }
    if (m_waiting >= 0) {
        follow(Action(m_branch.actions[static_cast<std::size_t>(m_waiting)]), m_waitingReason,
               frame);
        return;
    }
    const std::vector<int> random = actionsOf(When::byChance);
    const std::vector<int> usual = actionsOf(When::clipEnds);
    if (!random.empty()) {
        const int count = static_cast<int>(random.size());
        const int picked = random[static_cast<std::size_t>(m_chance.pick(count))];
        follow(Action(m_branch.actions[static_cast<std::size_t>(picked)]),
               {Cause::chance, {}, count, false}, frame);
    } else if (!usual.empty()) {
        follow(Action(m_branch.actions[static_cast<std::size_t>(usual.front())]),
               {Cause::clipEnd, {}, 0, false}, frame);
    } else {
        m_state = State::ended;
    }
}

void Player::follow(const Action& action, Reason reason, int frame) {
    const double played = m_clip->framesPerSecond > 0 ? frame / m_clip->framesPerSecond : 0.0;
    const double seconds = m_path.back().seconds + std::max(played, 0.0);
    enter(findBranch(action.target), action.target, std::move(reason), seconds);
}

void Player::restart() {
    if (m_path.empty()) {
        return;
    }
    Step& step = m_path.back();
    if (m_state == State::noBranch) {
        if (step.name.empty() && step.reason.cause == Cause::started) {
            step.name = m_story.first;
        }
        step.branch = findBranch(step.name);
    }
    if (step.branch >= 0) {
        m_branch = m_story.branches[static_cast<std::size_t>(step.branch)];
    }
    show();
}

bool Player::back() {
    if (m_path.size() < 2) {
        return false;
    }
    m_path.pop_back();
    const int branch = m_path.back().branch;
    m_branch = branch >= 0 ? m_story.branches[static_cast<std::size_t>(branch)] : Branch{};
    show();
    return true;
}

void Player::replaceStory(Story story, std::span<const int> moved) {
    takeStory(std::move(story));
    for (Step& step : m_path) {
        const bool wasThere = step.branch >= 0 && step.branch < static_cast<int>(moved.size());
        step.branch = wasThere ? moved[static_cast<std::size_t>(step.branch)] : -1;
        if (step.branch >= 0) {
            step.name = m_story.branches[static_cast<std::size_t>(step.branch)].name;
        }
    }
    const int current = m_path.empty() ? -1 : m_path.back().branch;
    if (current < 0) {
        return;
    }
    const Branch& now = m_story.branches[static_cast<std::size_t>(current)];
    if (now.actions != m_branch.actions) {
        m_waiting = -1;
    }
    m_branch.name = now.name;
    m_branch.actions = now.actions; // another video counts when the branch comes up again
}

std::vector<int> Player::actionsOf(Action::When when) const {
    std::vector<int> found;
    for (std::size_t i = 0; i < m_branch.actions.size(); ++i) {
        if (m_branch.actions[i].when == when) {
            found.push_back(static_cast<int>(i));
        }
    }
    return found;
}

std::vector<Choice> Player::choices(int frame) const {
    std::vector<Choice> found;
    if (m_state != State::playing) {
        return found;
    }
    const int random = static_cast<int>(actionsOf(When::byChance).size());
    bool hasUsual = random > 0;
    std::unordered_set<std::string_view> zones;
    std::unordered_set<std::string> keys;
    for (std::size_t i = 0; i < m_branch.actions.size(); ++i) {
        const Action& action = m_branch.actions[i];
        const int index = static_cast<int>(i);
        const bool waits = index == m_waiting;
        bool counts = true;
        switch (action.when) {
        case When::keyPressed:
            counts = keys.insert(lowered(action.parameter)).second;
            break;
        case When::zoneClicked:
            counts = zones.insert(action.parameter).second
                         ? waits || hasActiveZone(*m_clip, action.parameter, frame)
                         : waits;
            break;
        case When::clipEnds:
            counts = !std::exchange(hasUsual, true);
            break;
        case When::byChance:
            break;
        }
        if (counts) {
            found.push_back({index, waits, action.when == When::byChance ? random : 0});
        }
    }
    return found;
}

std::vector<int> Player::likelyNext() const {
    std::vector<int> found;
    if (m_state != State::playing) {
        return found;
    }
    std::unordered_set<int> known;
    const auto add = [&](int action) {
        const int branch = findBranch(m_branch.actions[static_cast<std::size_t>(action)].target);
        if (branch >= 0 && known.insert(branch).second) {
            found.push_back(branch);
        }
    };
    if (m_waiting >= 0) {
        add(m_waiting);
    }
    const std::vector<int> random = actionsOf(When::byChance);
    const std::vector<int> usual = actionsOf(When::clipEnds);
    std::for_each(random.begin(), random.end(), add);
    if (random.empty() && !usual.empty()) {
        add(usual.front());
    }
    for (const When when : {When::keyPressed, When::zoneClicked}) {
        const std::vector<int> actions = actionsOf(when);
        std::for_each(actions.begin(), actions.end(), add);
    }
    return found;
}

} // namespace player
