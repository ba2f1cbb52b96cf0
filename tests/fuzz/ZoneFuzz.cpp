// Any bytes as a pair of zone files: loading never crashes, every zone has the video's frames, and
// what loads can be drawn, edited, saved and loaded again. The first byte is the frame count, the
// next two the length of the information file, the rest the binary file.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/fuzz/FuzzServices.h"
#include "tests/fuzz/Require.h"
#include "tests/zone/RecordingCanvas.h"
#include "zone/ZoneSession.h"

namespace {

using fuzz::require;
using Names = std::vector<std::string>;

constexpr const char* kInfo = "/home/clip-ZoneInfo.xml";
constexpr const char* kBinary = "/home/clip-ZoneInfo.bin";
const auto kScale = zone::scaleBetween({1280, 720}, {1920, 1080});
constexpr int kDrawnZones = 8; // a few hundred empty ones show nothing new

Names namesOf(const zone::ZoneManager& manager) {
    Names names;
    for (int zone = 0; zone < manager.zoneCount(); ++zone) {
        names.push_back(manager.getZoneName(zone));
    }
    return names;
}

/// Edits, and takes all of it back: then a save would write what it would have written before.
void edit(zone::ZoneSession& session, int frameCount, int position) {
    zone_tests::RecordingCanvas canvas;
    const int frame = frameCount / 2;
    session.showFrame(frame);
    for (int zone = 0; zone < std::min(session.zones().zoneCount(), kDrawnZones); ++zone) {
        session.chooseZone(zone);
        session.zones().zone(zone)->draw(frame, canvas, [](platform::Point point) { return point; },
                                         0, {});
        (void)session.hitTest(zone, frame, position, position);
        session.moveSelectedPoint(zone, frame, position + 5, position);
        session.addPoint(zone, frame, position, 2 * position);
        session.setActive(zone, frame, position % 2 == 0);
        session.deletePoint(zone, frame, position, position);
    }
    while (session.undo()) {
    }
    require(!session.isModified());
    while (session.redo()) {
    }
}

void feed(support::MemoryFileSystem& files, int frameCount) {
    (void)zone::ZoneManager::create("clip", 0, false);
    const auto manager = zone::ZoneManager::create("clip", frameCount, true, kScale);
    if (!manager) {
        return;
    }
    for (int zone = 0; zone < manager->zoneCount(); ++zone) {
        require(manager->zone(zone)->frameCount() == frameCount);
    }
    if (frameCount > 0) {
        zone::ZoneSession session(manager);
        edit(session, frameCount, static_cast<int>(files.files[kBinary].size() % 64));
    }
    require(manager->save("clip.ogv") && manager->lastSaveFailure().empty());
    // Without its name a zone's record can be read in two ways.
    const Names names = namesOf(*manager);
    if (names.empty() || std::count(names.begin(), names.end(), "") > 0) {
        return;
    }
    const std::string written = files.files[kBinary];
    const auto again = zone::ZoneManager::create("clip", frameCount, true, kScale);
    require(again != nullptr);
    const Names found = namesOf(*again);
    require(found.size() >= names.size() && std::equal(names.begin(), names.end(), found.begin()));
    require(again->save("clip.ogv") && files.files[kBinary].size() >= written.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) {
        return 0;
    }
    fuzz::Services services;
    auto& files = services.files.files;
    const std::string rest(data + 3, data + size);
    const std::size_t infoSize = std::min(std::size_t{data[1]} + 256U * data[2], rest.size());
    if (infoSize > 0) {
        files[kInfo] = rest.substr(0, infoSize);
    }
    files[kBinary] = rest.substr(infoSize);
    feed(services.files, data[0]);
    return 0;
}
