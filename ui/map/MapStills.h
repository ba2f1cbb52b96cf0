// The stills of the clips that a map shows. UI thread only.
#pragma once

#include <memory>
#include <string>

#include "map/MapScene.h"
#include "platform/Geometry.h"
#include "stills/StillService.h"
#include "ui/map/SceneMap.h"

namespace ui {

class MapStills {
public:
    /// Of the stills that it asks for.
    static constexpr platform::Size kStillBox{272, 152};

    /// `map` is painted again when one has come. `service` may be null. `folder`: of the clips,
    /// ending in a separator; empty when it is unknown. All of them outlive the stills.
    MapStills(SceneMap& map, stills::StillService* service, const std::string& folder);

    /// Asks for those of the scene.
    void want(const map::MapScene& scene);
    /// Null while there is none.
    [[nodiscard]] SceneMap::Picture of(const map::MapBranch& branch);

private:
    [[nodiscard]] bool canHave(const map::MapBranch& branch) const;

    const std::string& m_folder;
    std::unique_ptr<stills::StillClient> m_client;
};

} // namespace ui
