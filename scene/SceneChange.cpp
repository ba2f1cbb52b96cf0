#include "scene/SceneChange.h"

#include <array>
#include <cstddef>

#include "core/Texts.h"

namespace scene {

std::string stepName(SceneStep step) {
    // In the order of the enumeration.
    static constexpr std::array kNames{
        "Step.AddBranch|add branch"_tr,
        "Step.DuplicateBranch|duplicate branch"_tr,
        "Step.RemoveBranch|remove branch"_tr,
        "Step.MoveBranch|move branch"_tr,
        "Step.Rename|rename"_tr,
        "Step.FirstBranch|first branch"_tr,
        "Step.Video|video"_tr,
        "Step.AddAction|add action"_tr,
        "Step.DuplicateAction|duplicate action"_tr,
        "Step.RemoveAction|remove action"_tr,
        "Step.MoveAction|move action"_tr,
        "Step.Condition|condition"_tr,
        "Step.Parameter|parameter"_tr,
        "Step.Target|target"_tr,
        "Step.Immediate|immediate"_tr,
        "Step.RestoreVersion|restore version"_tr,
        "Step.AddVideo|add video"_tr,
    };
    static_assert(kNames.size() == static_cast<std::size_t>(SceneStep::addVideo) + 1);
    return core::trStored(kNames.at(static_cast<std::size_t>(step)));
}

} // namespace scene
