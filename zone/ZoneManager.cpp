#include "zone/ZoneManager.h"

#include <cstddef>
#include <utility>

#include "core/Log.h"

namespace zone {
namespace {

// Support looks messages up by these places; they do not follow this file's lines.
constexpr const char* kSource = "..\\ZoneManager.cpp";
constexpr const char* kZoneIndexIsInvalid = "Zone index is invalid";
constexpr const char* kInvalidZoneIndex = "Invalid zone index";
constexpr int kIsActiveLine = 70;
constexpr int kSetActiveLine = 78;
constexpr int kRemoveZoneLine = 119;
constexpr int kGetZoneNameLine = 127;
constexpr int kSetZoneNameLine = 135;
constexpr int kHitTestLine = 142;
constexpr int kEndMoveLine = 149; // no message is fixed for it
constexpr int kMoveSelectedPointLine = 157;
constexpr int kAddPointLine = 164;
constexpr int kDeletePointLine = 171;

} // namespace

std::shared_ptr<Zone> ZoneManager::zone(int index) {
    return index >= 0 && index < zoneCount() ? m_zones[static_cast<std::size_t>(index)] : nullptr;
}

std::shared_ptr<const Zone> ZoneManager::zone(int index) const {
    return index >= 0 && index < zoneCount() ? m_zones[static_cast<std::size_t>(index)] : nullptr;
}

void ZoneManager::addZone(const std::shared_ptr<Zone>& zone) {
    if (zone) {
        m_zones.push_back(zone);
    }
}

void ZoneManager::insertZone(int index, std::shared_ptr<Zone> zone) {
    m_zones.insert(m_zones.begin() + index, std::move(zone));
}

std::shared_ptr<const ZoneManager> ZoneManager::snapshot() const {
    auto taken = std::make_shared<ZoneManager>();
    taken->videoWidth = videoWidth;
    taken->videoHeight = videoHeight;
    taken->frameCount = frameCount;
    taken->scale = scale;
    for (const std::shared_ptr<Zone>& zone : m_zones) {
        taken->m_zones.push_back(std::make_shared<Zone>(*zone));
    }
    return taken;
}

const Zone* ZoneManager::checkedZone(int index, const char* message, int line) const {
    const Zone* found = zone(index).get();
    if (!found) {
        core::Log::get()->Error("%s:%d %s", kSource, line, message);
    }
    return found;
}

Zone* ZoneManager::checkedZone(int index, const char* message, int line) {
    return std::as_const(*this).checkedZone(index, message, line) ? zone(index).get() : nullptr;
}

void ZoneManager::removeZone(int zone) {
    if (checkedZone(zone, kInvalidZoneIndex, kRemoveZoneLine)) {
        m_zones.erase(m_zones.begin() + zone);
    }
}

std::string ZoneManager::getZoneName(int zone) const {
    const Zone* found = checkedZone(zone, kInvalidZoneIndex, kGetZoneNameLine);
    return found ? found->name() : std::string();
}

void ZoneManager::setZoneName(int zone, const std::string& name) {
    if (Zone* found = checkedZone(zone, kInvalidZoneIndex, kSetZoneNameLine)) {
        found->setName(name);
    }
}

bool ZoneManager::isActive(int zone, int frame) const {
    const Zone* found = checkedZone(zone, kZoneIndexIsInvalid, kIsActiveLine);
    return found && found->isActive(frame);
}

EditScope ZoneManager::scope(EditContext& context, int zone, TrackChanges* changes) const {
    return {context.zone(zone),
            context.progressChanges,
            {videoWidth, videoHeight},
            changes,
            context.handleReach};
}

void ZoneManager::setActive(EditContext& context, int zone, int frame, bool active,
                            TrackChanges* changes) {
    if (Zone* found = checkedZone(zone, kZoneIndexIsInvalid, kSetActiveLine)) {
        found->setActive(scope(context, zone, changes), frame, active);
    }
}

bool ZoneManager::hitTest(EditContext& context, int zone, int frame, int x, int y) const {
    const Zone* found = checkedZone(zone, kZoneIndexIsInvalid, kHitTestLine);
    return found && found->hitTest(context.zone(zone), frame, x, y, context.handleReach);
}

void ZoneManager::endMove(int zone, int frame, int x, int y) const {
    if (const Zone* found = checkedZone(zone, kZoneIndexIsInvalid, kEndMoveLine)) {
        found->endMove(frame, x, y);
    }
}

void ZoneManager::moveSelectedPoint(EditContext& context, int zone, int frame, int x, int y,
                                    TrackChanges* changes) {
    if (Zone* found = checkedZone(zone, kZoneIndexIsInvalid, kMoveSelectedPointLine)) {
        found->moveSelectedPoint(scope(context, zone, changes), frame, x, y);
    }
}

void ZoneManager::addPoint(EditContext& context, int zone, int frame, int x, int y,
                           TrackChanges* changes) {
    if (Zone* found = checkedZone(zone, kZoneIndexIsInvalid, kAddPointLine)) {
        found->addPoint(scope(context, zone, changes), frame, x, y);
    }
}

void ZoneManager::deletePoint(EditContext& context, int zone, int frame, int x, int y,
                              TrackChanges* changes, bool orSame) {
    if (Zone* found = checkedZone(zone, kZoneIndexIsInvalid, kDeletePointLine)) {
        found->deletePoint(scope(context, zone, changes), frame, x, y, orSame);
    }
}

void ZoneManager::putShape(EditContext& context, int zone, int frame, const ZoneShape& shape,
                           TrackChanges* changes) {
    this->zone(zone)->putShape(scope(context, zone, changes), frame, shape);
}

void ZoneManager::replaceShapes(EditContext& context, int zone, const ShapeStretch& stretch,
                                TrackChanges* changes) {
    this->zone(zone)->replaceShapes(scope(context, zone, changes), stretch);
}

} // namespace zone
