// Plays a story by its rules: given what happened on which frame of the clip, it says which branch
// plays. It has no window, no clock and no files. docs/preview.md states the rules.
//
//   Player player(story, clips, seed);
//   player.start(story.first);
//   player.press('b', frame);       // true: answered; see branch(), waiting() and state()
//   player.clipEnded(frame);
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"
#include "player/Chance.h"
#include "player/Clip.h"
#include "player/Story.h"

namespace player {

/// Why a branch came up.
struct Reason {
    enum class Cause { started, zone, key, clipEnd, chance };

    Cause cause = Cause::started;
    std::string name{};       ///< of the zone or the key
    int choices = 0;          ///< of chance: how many there were
    bool isImmediate = false; ///< of zone and key: not at the end of the clip
};

/// A branch on the way so far.
struct Step {
    int branch = -1; ///< in the story; -1: not there
    std::string name{};
    Reason reason{};
    double seconds = 0.0; ///< from the start of the first clip, by what was played of each
};

/// What an action would do now, for a list of choices.
struct Choice {
    int action = 0;     ///< of the branch
    bool waits = false; ///< chosen: followed at the end of the clip
    int outOf = 0;      ///< of an action by chance: how many there are
};

/// One thread.
class Player {
public:
    enum class State {
        playing,
        ended,         ///< no action applies
        noBranch,      ///< the last step's branch is not in the story
        noVideo,       ///< it has none
        unreadableClip ///< it has one that cannot be played
    };
    /// A scene that leads in a circle may play for days.
    static constexpr std::size_t kMostSteps = 1000;
    /// The clip of that name; null: it cannot be played.
    using ClipSource = std::function<std::shared_ptr<const Clip>(const std::string& video)>;

    /// `clips` is called whenever a branch comes up.
    Player(Story story, ClipSource clips, std::uint32_t seed);

    /// Starts over with the first branch of this name, or with the branch of this number.
    void start(std::string_view name);
    void start(int branch);

    // What happened on a frame of the clip. True: an action answers to it; it is followed, or waits
    // for the end of the clip.
    /// `key`: a letter or any other text; letters are compared without case.
    bool press(std::string_view key, int frame);
    bool click(platform::Point pixel, int frame);
    /// The same as the key or the click that this action of the branch waits for. False for other
    /// actions, and for a zone that is not active.
    bool choose(int action, int frame);
    /// `frame`: how many the clip has had.
    void clipEnded(int frame);

    /// Plays the branch on show from its beginning, as it is in the story now; what waits is
    /// forgotten. One that was not in the story is looked for again.
    void restart();
    /// Plays the branch before it from its beginning. False when there is none.
    bool back();
    /// The story has changed: `moved` says for each branch of the old one where it is now, -1 for
    /// gone. A branch on show that is gone plays on as it was. A choice waits on only if the
    /// branch's actions are the same.
    void replaceStory(Story story, std::span<const int> moved);

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] const Branch& branch() const { return m_branch; }
    /// Of the branch; null when it cannot be played.
    [[nodiscard]] const std::shared_ptr<const Clip>& clip() const { return m_clip; }
    /// The action that waits for the end of the clip; -1 for none.
    [[nodiscard]] int waiting() const { return m_waiting; }
    /// The way to the branch on show; of a long way the last kMostSteps steps.
    [[nodiscard]] const std::vector<Step>& path() const { return m_path; }
    /// How many steps there were before those of the path.
    [[nodiscard]] int stepsBefore() const { return m_stepsBefore; }
    /// What can happen from this frame on, in the order of the actions.
    [[nodiscard]] std::vector<Choice> choices(int frame) const;
    /// The branches that may come next, in the story's numbers, the likeliest first and each once.
    [[nodiscard]] std::vector<int> likelyNext() const;

private:
    bool answer(int action, Reason reason, int frame);
    void follow(const Action& action, Reason reason, int frame);
    void enter(int branch, std::string name, Reason reason, double seconds);
    void startOver(int branch, std::string name);
    void show();
    void takeStory(Story story);
    [[nodiscard]] int findBranch(std::string_view name) const;
    [[nodiscard]] std::vector<int> actionsOf(Action::When when) const;

    Story m_story;
    std::map<std::string, int, std::less<>> m_numbers; ///< of the story's branches, by name
    ClipSource m_clips;
    Chance m_chance;
    State m_state = State::ended;
    Branch m_branch; ///< a copy: it plays on when it is taken out of the story
    std::shared_ptr<const Clip> m_clip;
    int m_waiting = -1;
    Reason m_waitingReason;
    std::vector<Step> m_path;
    int m_stepsBefore = 0;
};

} // namespace player
