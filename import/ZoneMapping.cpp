#include "import/ZoneMapping.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "core/FileError.h"
#include "core/Log.h"
#include "zone/LoadReport.h"
#include "zone/Scale.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace imports {
namespace {

using platform::Point;
using platform::Rect;

/// `value`: any that a file may hold, from `start` of the old picture.
int mapSide(int value, int start, int old, int scaled, int crop, int side, int frame) {
    const double moved =
        (static_cast<double>(value) - start) * scaled / std::max(old, 1) - crop + side;
    return static_cast<int>(std::lround(std::clamp(moved, 0.0, static_cast<double>(frame))));
}

} // namespace

Point mapPoint(const Framing& framing, const Rect& old, Point point) {
    return {mapSide(point.x, old.left, old.width(), framing.scaled.width, framing.crop.x,
                    framing.inFrame.x, framing.frame.width),
            mapSide(point.y, old.top, old.height(), framing.scaled.height, framing.crop.y,
                    framing.inFrame.y, framing.frame.height)};
}

ZoneCopy copyZones(const std::string& oldBase, const std::string& newBase, const Framing& framing,
                   const Rect& old) {
    const core::LogCollector quiet; // the result says enough
    const zone::Scale videoPixels{};
    const auto zones =
        zone::ZoneManager::createForEditing(oldBase, zone::kStoredFrameCount, videoPixels);
    if (!zones || zones->loadReport().problem != zone::LoadProblem::none) {
        return ZoneCopy::failed;
    }
    if (zones->zoneCount() == 0) {
        return ZoneCopy::none;
    }
    for (int number = 0; number < zones->zoneCount(); ++number) {
        zones->zone(number)->mapPoints([&](Point point) { return mapPoint(framing, old, point); });
    }
    return zones->saveAs(newBase) && zones->lastSaveFailure().empty() ? ZoneCopy::made
                                                                      : ZoneCopy::failed;
}

} // namespace imports
