#include "tools/tour/AuthoringPass.h"

#include <cstddef>
#include <iterator>
#include <string>

#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "tools/tour/Hands.h"
#include "tools/tour/Script.h"

namespace tour {

namespace {

constexpr std::u16string_view kOpenScene = u"OpenSceneWindow";
constexpr std::u16string_view kNewScene = u"NewSceneWindow";
constexpr std::u16string_view kBranches = u"QuorvelWindow";
constexpr std::u16string_view kQuestion = u"ConfirmationWindow";

void addVideos(Script& script, Hands& hands) {
    hands.press({kBranches, u"ButtonAddVideo"});
    script.until(std::u16string(kBranches), [&script] {
        return script.get<toolkit::CComboUI>(u"ComboVideoName").GetCount() == 2 &&
               script.get<toolkit::CControlUI>(u"ButtonSave").IsEnabled();
    });
}

void addBranches(Hands& hands) {
    for (std::size_t i = 0; i < std::size(kPlannedBranches); ++i) {
        hands.press({kBranches, u"ButtonAddBranch"});
        hands.write({kBranches, u"EditBranchName"}, std::u16string(kPlannedBranches[i]));
        hands.choose({kBranches, u"ComboVideoName"}, kPlannedVideos[i]);
    }
    hands.choose({kBranches, u"ComboBranchName"}, 0);
    hands.press({kBranches, u"CheckFirst"});
}

void addActions(Hands& hands) {
    int shown = 0;
    int row = 0;
    for (const PlannedAction& action : kPlannedActions) {
        if (action.branch != shown) {
            shown = action.branch;
            row = 0;
            hands.choose({kBranches, u"ComboBranchName"}, shown);
        }
        hands.press({kBranches, u"ButtonAddAction"});
        hands.choose({kBranches, u"ComboConditions", row}, action.condition);
        if (action.letter >= 0) {
            hands.choose({kBranches, u"ComboParameter", row}, action.letter);
        }
        hands.choose({kBranches, u"ComboBranches", row}, action.target);
        if (action.isImmediate) {
            hands.press({kBranches, u"CheckImmediate", row});
        }
        ++row;
    }
}

} // namespace

void writeAuthoringPass(Script& script, Hands& hands) {
    hands.press({kOpenScene, u"ButtonNewScene"});
    hands.write({kNewScene, u"EditSceneName"}, std::u16string(kPlannedScene));
    hands.press({kNewScene, u"ButtonCreate"});
    addVideos(script, hands);
    addBranches(hands);
    addActions(hands);
    hands.press({kBranches, u"ButtonSave"});
    hands.press({kBranches, u"ButtonExit"});
    hands.press({kQuestion, u"ButtonYes"});
}

} // namespace tour
