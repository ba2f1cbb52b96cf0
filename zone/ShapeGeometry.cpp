#include "zone/ShapeGeometry.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/Log.h"
#include "zone/ShapeRecord.h"
#include "zone/ZoneManager.h"

namespace zone {
namespace {

// Support looks messages up by this place; it does not follow any file's lines.
constexpr const char* kShapeSource = "..\\ZoneShape.cpp";
constexpr int kPointIndexLine = 368;

int clampedSide(int value, int size) {
    if (size > 0) {
        value = std::min(value, size - 1);
    }
    return std::max(value, 0);
}

bool isInReach(int value, int handle) {
    const std::int64_t distance = std::int64_t{value} - handle;
    return distance >= -kHandleReach && distance < kHandleReach;
}

bool handleContains(platform::Point handle, platform::Point at) {
    return isInReach(at.x, handle.x) && isInReach(at.y, handle.y);
}

} // namespace

void reportPointIndex() {
    core::Log::get()->Error("%s:%d Invalid point index", kShapeSource, kPointIndexLine);
}

platform::Point clampedToArea(int x, int y) {
    const std::shared_ptr<ZoneManager> manager = currentZoneManager();
    const int width = manager ? manager->videoWidth : 0;
    const int height = manager ? manager->videoHeight : 0;
    return {clampedSide(x, width), clampedSide(y, height)};
}

int insertPosition(int afterIndex, std::size_t count) {
    const int end = static_cast<int>(count);
    if (afterIndex >= end || count >= kMaxPoints) {
        return -1;
    }
    if (end == 0 || afterIndex == -1) {
        return end;
    }
    return afterIndex < -1 ? -1 : afterIndex + 1;
}

void shiftPoints(std::span<platform::Point> points, platform::Point delta) {
    for (platform::Point& point : points) {
        point = {wrappedSum(point.x, delta.x), wrappedSum(point.y, delta.y)};
    }
}

int hitPoint(std::span<const platform::Point> points, platform::Point at) {
    for (std::size_t index = 0; index < points.size(); ++index) {
        if (handleContains(points[index], at)) {
            return static_cast<int>(index);
        }
    }
    return -1;
}

int hitHandle(std::span<const platform::Point> points, platform::Point center, platform::Point at) {
    const int point = hitPoint(points, at);
    const int count = static_cast<int>(points.size());
    if (point != -1 || count < kMinimumOutline) {
        return point;
    }
    return handleContains(center, at) ? count : -1;
}

} // namespace zone
