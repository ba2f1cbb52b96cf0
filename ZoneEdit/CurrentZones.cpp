#include "ZoneEdit/CurrentZones.h"

#include <utility>

namespace zoneedit {
namespace {

std::shared_ptr<const zone::ZoneManager>& current() {
    static std::shared_ptr<const zone::ZoneManager> manager;
    return manager;
}

} // namespace

std::shared_ptr<const zone::ZoneManager> currentZoneManager() {
    return current();
}

void setCurrentZoneManager(std::shared_ptr<const zone::ZoneManager> manager) {
    current() = std::move(manager);
}

} // namespace zoneedit
