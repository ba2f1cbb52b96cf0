// What a map shows of a scene, as values: it can be laid out on a thread.
#pragma once

#include <string>
#include <vector>

namespace scene {
class SceneManager;
}

namespace map {

struct MapAction {
    int type = 0;       ///< as in scene::Action
    std::string text;   ///< what leads on, as shown: "Key L", "Default", the name of a zone
    std::string target; ///< as the action names it
    int branch = -1;    ///< that it leads to; -1: there is none of this name
    bool immediate = false;
    std::string letter{}; ///< of the key that leads on

    /// It names a branch that is not there.
    [[nodiscard]] bool isBroken() const { return branch < 0 && !target.empty(); }
    friend bool operator==(const MapAction&, const MapAction&) = default;
};

struct MapBranch {
    std::string name;
    std::string video;
    std::vector<MapAction> actions;

    friend bool operator==(const MapBranch&, const MapBranch&) = default;
};

struct MapScene {
    std::vector<MapBranch> branches; ///< in the scene's order
    int first = -1;                  ///< -1: the scene has no first branch

    friend bool operator==(const MapScene&, const MapScene&) = default;
};

/// Of branches with the same name, the first one is where their name leads.
[[nodiscard]] MapScene readMap(const scene::SceneManager& scene);

} // namespace map
