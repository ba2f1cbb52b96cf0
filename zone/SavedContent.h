// Whether a save would now write other bytes than right after opening or after the last good save.
// The content decides, however it came about: it is compared with a snapshot. The answer is "yes"
// at once while what differed before still does, so that it can be asked after every move of a
// drag; and zones that were found alike are compared again only when their shapes change. UI thread
// only.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace zone {

class ZoneManager;

class SavedContent {
public:
    /// What `zones` hold now is what was saved. To be called before differs().
    void noteSaved(const ZoneManager& zones);
    [[nodiscard]] bool differs(const ZoneManager& zones) const;

private:
    /// The zones from `first`, and of that one the frames from `frame`, up to the zone `end`.
    [[nodiscard]] bool differs(const ZoneManager& zones, int first, int frame, int end) const;

    std::shared_ptr<const ZoneManager> m_saved;
    /// By zone: the shapes that were found to be stored like the saved ones last.
    mutable std::vector<std::uint64_t> m_alike;
    // Where the last difference of a shape was found.
    mutable int m_zone = 0;
    mutable int m_frame = 0;
};

} // namespace zone
