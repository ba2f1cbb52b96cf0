#include "zone/StepLabel.h"

#include <cstddef>
#include <iterator>

#include "core/Texts.h"

namespace zone {

using Name = StepLabel::Name;

std::string stepName(Name name) {
    static constexpr core::Text kNames[] = {"Step.AddZone|add zone"_tr,
                                            "Step.RemoveZone|remove zone"_tr,
                                            "Step.Rename|rename"_tr,
                                            "Step.AddPoint|add point"_tr,
                                            "Step.MovePoint|move point"_tr,
                                            "Step.DeletePoint|delete point"_tr,
                                            "Step.Active|active"_tr,
                                            "Step.RestoreVersion|restore version"_tr,
                                            "Step.Interpolate|interpolate"_tr,
                                            "Step.Fill|fill"_tr,
                                            "Step.Paste|paste"_tr,
                                            "Step.ApplyShape|apply shape"_tr,
                                            "Step.Follow|follow"_tr,
                                            "Step.Rectangle|rectangle"_tr,
                                            "Step.Scale|scale"_tr,
                                            "Step.Rotate|rotate"_tr,
                                            "Step.MatchPoints|match points"_tr};
    static_assert(std::size(kNames) == static_cast<std::size_t>(Name::matchPoints) + 1);
    return core::trStored(kNames[static_cast<std::size_t>(name)]);
}

} // namespace zone
