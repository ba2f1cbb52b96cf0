// Any bytes as a pair of zone files: loading never crashes, every zone has the video's frames, and
// what loads can be drawn, edited, saved and loaded again. The first byte is the frame count, the
// next two the length of the information file, the rest the binary file.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/Log.h"
#include "core/Services.h"
#include "tests/support/FixedClock.h"
#include "tests/support/MemoryFileSystem.h"
#include "tests/zone/RecordingCanvas.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneView.h"

namespace {

constexpr const char* kInfo = "/home/clip-ZoneInfo.xml";
constexpr const char* kBinary = "/home/clip-ZoneInfo.bin";
constexpr int kDrawnZones = 8; // a few hundred empty ones show nothing new

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool allNamed(const zone::ZoneManager& manager) {
    for (int zone = 0; zone < manager.zoneCount(); ++zone) {
        if (manager.getZoneName(zone).empty()) {
            return false;
        }
    }
    return true;
}

void edit(zone::ZoneManager& manager, int frameCount, int position) {
    zone_tests::RecordingCanvas canvas;
    for (int zone = 0; zone < std::min(manager.zoneCount(), kDrawnZones); ++zone) {
        const int frame = frameCount / 2;
        manager.draw(zone, frame, canvas, 3, 4);
        manager.hitTest(zone, frame, position, position);
        manager.moveSelectedPoint(zone, frame, position + 5, position);
        manager.addPoint(zone, frame, position, 2 * position);
        manager.setActive(zone, frame, position % 2 == 0);
        manager.deletePoint(zone, frame, position, position);
    }
}

void feed(support::MemoryFileSystem& files, int frameCount) {
    (void)zone::ZoneManager::create("clip", 0, false);
    const auto manager = zone::ZoneManager::create("clip", frameCount, true);
    if (!manager) {
        return;
    }
    for (int zone = 0; zone < manager->zoneCount(); ++zone) {
        require(manager->zone(zone)->frameCount() == frameCount);
    }
    zone::setCurrentZoneManager(manager);
    if (frameCount > 0) {
        edit(*manager, frameCount, static_cast<int>(files.files[kBinary].size() % 64));
    }
    require(manager->save("clip.ogv") && manager->lastSaveFailure().empty());
    // Without its name a zone's record can be read in two ways.
    if (manager->zoneCount() == 0 || !allNamed(*manager)) {
        return;
    }
    const std::string written = files.files[kBinary];
    const auto again = zone::ZoneManager::create("clip", frameCount, true);
    require(again && again->zoneCount() >= manager->zoneCount());
    for (int zone = 0; zone < manager->zoneCount(); ++zone) {
        require(again->getZoneName(zone) == manager->getZoneName(zone));
    }
    require(again->save("clip.ogv") && files.files[kBinary].size() >= written.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) {
        return 0;
    }
    support::MemoryFileSystem files;
    support::FixedClock clock;
    const core::ServicesOverride services({&files, &clock, &platform::nativeProcess()});
    core::Log::exchange(std::make_shared<core::Log>(""));
    zone::setZoneView({{1280, 720}, {1920, 1080}});
    const std::string rest(data + 3, data + size);
    const std::size_t infoSize = std::min(std::size_t{data[1]} + 256U * data[2], rest.size());
    if (infoSize > 0) {
        files.files[kInfo] = rest.substr(0, infoSize);
    }
    files.files[kBinary] = rest.substr(infoSize);
    feed(files, data[0]);
    zone::setCurrentZoneManager(nullptr);
    return 0;
}
