// The findings of one branch and its actions, from what the branch holds and what the rest of the
// scene makes of it. This module's sources only.
#pragma once

#include <cstdint>
#include <vector>

#include "check/Finding.h"
#include "check/NameTable.h"

namespace scene {
class Branch;
}

namespace check {

/// What matters of a branch; names by their numbers.
struct BranchContent {
    struct Action {
        int type = 0;
        int parameter = 0;
        int target = 0;

        friend bool operator==(const Action&, const Action&) = default;
    };
    int name = -1;
    int video = -1;
    std::vector<Action> actions{};

    friend bool operator==(const BranchContent&, const BranchContent&) = default;
};

[[nodiscard]] BranchContent contentOf(const scene::Branch& branch, NameTable& names);

/// What other branches and the files contribute to a branch's findings.
struct BranchSituation {
    enum class Reach : std::uint8_t { reached, byNoAction, notFromFirst };
    enum class Reference : std::uint8_t { good, missing, unknown };

    Reach reach = Reach::reached;
    bool isFirstOfName = true;
    bool isSecondOfName = false;
    int similarName = -1; ///< number of an earlier branch's name
    bool isOnlyEnd = false;
    // One for each action.
    std::vector<Reference> targets{};
    std::vector<Reference> zones{}; ///< good for actions that wait for none

    friend bool operator==(const BranchSituation&, const BranchSituation&) = default;
};

/// Ordered by action, those of the branch itself first, and then by video.
[[nodiscard]] std::vector<Finding>
findingsOf(const BranchContent& branch, const BranchSituation& situation, const NameTable& names);

} // namespace check
