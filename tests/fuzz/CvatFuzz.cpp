// Any bytes as a file of tracks: reading never crashes and never takes much memory, and the zones
// that come out are written to a file that gives the same zones again.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tests/fuzz/FuzzServices.h"
#include "tests/fuzz/Require.h"
#include "tools/inspect/Cvat.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace {

constexpr inspect::CvatClip kClip{{640, 360}, 30};

/// The file that the zones of `text` are written to; empty if it is refused.
std::string rewritten(std::string_view text) {
    const auto result = inspect::readCvat(text, kClip);
    const auto* tracks = std::get_if<std::vector<inspect::CvatTrack>>(&result);
    if (tracks == nullptr) {
        return {};
    }
    const auto zones = zone::ZoneManager::createEmpty();
    zones->scale = zone::Scale{};
    addZones(*zones, *tracks, kClip);
    fuzz::require(zones->zoneCount() == static_cast<int>(tracks->size()));
    for (int i = 0; i < zones->zoneCount(); ++i) {
        fuzz::require(zones->zone(i)->frameCount() == kClip.frameCount);
    }
    std::ostringstream out;
    static_cast<void>(writeCvat(out, *zones, kClip)); // names may lose characters
    return out.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Services services;
    const std::string first =
        rewritten({reinterpret_cast<const char*>(data), size}); // NOLINT: bytes as text
    fuzz::require(first.empty() || rewritten(first) == first);
    return 0;
}
