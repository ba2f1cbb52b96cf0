// Whether a save would now write other bytes than right after opening or after the last good save.
// The content decides, however it came about: zones are compared by digests of what a file would
// hold, and only changed zones need one. UI thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace zone {

class Zone;
class ZoneManager;

class SavedContent {
public:
    /// What `zones` hold now is what was saved.
    void noteSaved(const ZoneManager& zones);
    /// Has to be called before a zone changes.
    void beforeChange(const ZoneManager& zones, const Zone& zone);
    [[nodiscard]] bool differs(const ZoneManager& zones) const;

private:
    struct Entry {
        std::shared_ptr<const Zone> zone;
        std::optional<std::uint64_t> digest; ///< none while the zone is as it was saved
    };
    std::vector<Entry> m_saved;
};

} // namespace zone
