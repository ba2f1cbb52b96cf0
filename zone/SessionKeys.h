// The keys of the zone that an editor works on, found when somebody asks and kept up to date
// afterwards. A change costs nothing here until the next question. UI thread only.
#pragma once

#include <cstdint>
#include <vector>

#include "edit/Observers.h"
#include "zone/ShapeKeys.h"
#include "zone/ShapeStretch.h"
#include "zone/ZoneOperations.h"

namespace zone {

class ZoneSession;

class SessionKeys {
public:
    /// `session` outlives it. To be made before listeners that ask it.
    explicit SessionKeys(ZoneSession& session);

    /// The keys of zone number `zone`; none of one that is not there. Valid until the next call.
    /// Asking for one zone after the other finds all keys anew each time.
    [[nodiscard]] const ShapeKeys& of(int zone);

private:
    void note(const std::vector<ZoneChange>& changes);

    ZoneSession& m_session;
    edit::Subscription m_changes;
    ShapeKeys m_keys;
    int m_zone = -1; ///< that the keys are of
    std::uint64_t m_shapesId = 0;
    FrameRange m_changed; ///< since then, at most
};

} // namespace zone
