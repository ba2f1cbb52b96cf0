#include "scene/SceneChange.h"

#include <array>
#include <cstddef>

namespace scene {

const char* stepName(SceneStep step) {
    // In the order of the enumeration.
    static constexpr std::array kNames{
        "add branch",       "duplicate branch", "remove branch", "move branch",
        "rename",           "first branch",     "video",         "add action",
        "duplicate action", "remove action",    "move action",   "condition",
        "parameter",        "target",           "immediate",     "restore version",
        "add video",
    };
    static_assert(kNames.size() == static_cast<std::size_t>(SceneStep::addVideo) + 1);
    return kNames.at(static_cast<std::size_t>(step));
}

} // namespace scene
