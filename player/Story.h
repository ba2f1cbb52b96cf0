// What a player plays: branches and their actions, as values.
#pragma once

#include <string>
#include <vector>

namespace player {

struct Action {
    enum class When { clipEnds, keyPressed, zoneClicked, byChance };

    When when = When::clipEnds;
    std::string parameter{}; ///< the key or the zone's name
    std::string target{};    ///< the name of a branch
    bool isImmediate = false;

    friend bool operator==(const Action&, const Action&) = default;
};

struct Branch {
    std::string name{};
    std::string video{}; ///< empty: none
    std::vector<Action> actions{};

    friend bool operator==(const Branch&, const Branch&) = default;
};

struct Story {
    std::string first{}; ///< the name of the branch that plays first
    std::vector<Branch> branches{};
};

} // namespace player
