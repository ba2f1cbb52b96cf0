// Script of an author who makes a scene from nothing.
#pragma once

#include <string_view>

namespace tour {

class Hands;
class Script;

/// An action of the scene; branches by their place.
struct PlannedAction {
    int branch;
    int condition; ///< as the list of conditions has them
    int letter;    ///< of a key, 0 for A; -1 for the other conditions
    int target;
    bool isImmediate = false;
};

inline constexpr std::u16string_view kPlannedScene = u"Ladder Inspection";
inline constexpr std::u16string_view kPlannedBranches[] = {u"Start",        u"Look up", u"Climb",
                                                           u"Ask for help", u"Fall",    u"Done"};
/// The video of each branch, as the list of two has them.
inline constexpr int kPlannedVideos[] = {0, 1, 0, 1, 1, 0};
inline constexpr PlannedAction kPlannedActions[] = {
    {0, 1, 11, 1},       {0, 1, 7, 3, true}, {0, 0, -1, 0}, {1, 3, -1, 2}, {1, 3, -1, 4},
    {2, 1, 25, 5, true}, {2, 0, -1, 4},      {3, 0, -1, 2}, {4, 0, -1, 3}, {5, 0, -1, 0, true},
};

/// Starts the scene, adds the two videos that the file dialog gives, six branches and ten actions,
/// saves and exits.
void writeAuthoringPass(Script& script, Hands& hands);

} // namespace tour
