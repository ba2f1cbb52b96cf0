// The ways between the branches of a scene. This module's sources only.
#pragma once

#include <cstddef>
#include <vector>

namespace check {

/// What leads where; all but `next` and `ends` by the numbers of names.
struct Ways {
    std::vector<int> first;         ///< first branch of that name, -1 if none
    std::vector<int> second;        ///< second one
    std::vector<int> next;          ///< by branch: the next of the same name
    std::vector<bool> isTarget;     ///< of an action, whoever has it
    std::vector<bool> isReached;    ///< from the first branch
    std::vector<int> firstOfFolded; ///< by folded name: the first name that folds so
    int ends = 0;                   ///< branches without actions
    bool hasFirstBranch = true;

    [[nodiscard]] static std::size_t at(int number) { return static_cast<std::size_t>(number); }
};

} // namespace check
