// What the window of earlier versions needs to know about what it shows: a scene, or the zones of a
// video. Each editor makes its own.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "check/Differences.h"
#include "core/Texts.h"
#include "map/MapScene.h"
#include "recovery/Versions.h"
#include "ui/map/MapLayouts.h"

namespace scene {
class SceneSession;
}

namespace ui {

/// What a map shows of a version.
struct VersionMap {
    std::shared_ptr<const map::MapScene> scene; ///< null: there is nothing to show
    std::shared_ptr<MapLayouts> layouts;
    std::vector<int> errors; ///< of each branch
};

struct VersionDetails {
    bool isReadable = false;
    std::string summary; ///< how it differs from what is edited, in a few words
    std::vector<check::Line> differences;
    std::vector<check::Line> contents;
    /// Takes long with a large version. Any thread. Empty: it has no map.
    std::function<VersionMap(const std::function<bool()>& isCancelled)> drawMap;
    VersionMap map{}; ///< of a version that was chosen
    /// Makes it the contents, as one step; false when that cannot be. UI thread.
    std::function<bool()> restore;
};

struct VersionHistory {
    std::string name;     ///< of the scene or video
    std::u16string parts; ///< what a version is made of: "Actions"
    core::Text about;     ///< what versions of "{0}" are compared with
    std::string folder;   ///< where the versions are
    /// Any thread; logs into the log.
    std::function<VersionDetails(const recovery::Version&)> read;
    bool hasMap = false;
    std::string clipFolder{}; ///< of the stills in the map; empty when it is unknown
};

/// Compared with the scene as it is now. `session` outlives the history.
[[nodiscard]] VersionHistory sceneHistory(scene::SceneSession& session,
                                          std::vector<std::string> conditions);

} // namespace ui
