#include "ui/map/MapStills.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "stills/Still.h"

namespace ui {

namespace {

constexpr std::size_t kMostStills = 400;

} // namespace

MapStills::MapStills(SceneMap& map, stills::StillService* service, const std::string& folder)
    : m_folder(folder) {
    if (service != nullptr) {
        m_client = std::make_unique<stills::StillClient>(
            *service, [&map](const stills::StillRequest&) { map.Invalidate(); });
    }
}

bool MapStills::canHave(const map::MapBranch& branch) const {
    return m_client != nullptr && !m_folder.empty() && !branch.video.empty();
}

void MapStills::want(const map::MapScene& scene) {
    std::vector<stills::StillRequest> requests;
    for (const map::MapBranch& branch : scene.branches) {
        if (canHave(branch) && requests.size() < kMostStills) {
            requests.push_back({m_folder + branch.video, kStillBox});
        }
    }
    if (m_client != nullptr) {
        m_client->want(std::move(requests));
    }
}

SceneMap::Picture MapStills::of(const map::MapBranch& branch) {
    const stills::StillPtr still =
        canHave(branch) ? m_client->find({m_folder + branch.video, kStillBox}) : nullptr;
    return still ? SceneMap::Picture(still, &still->picture) : nullptr;
}

} // namespace ui
