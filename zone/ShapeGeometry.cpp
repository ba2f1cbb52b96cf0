#include "zone/ShapeGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "core/Log.h"
#include "zone/PointSums.h"
#include "zone/ShapeRecord.h"

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

bool isInReach(int value, int handle, double reach) {
    const auto distance = static_cast<double>(std::int64_t{value} - handle);
    return distance >= -reach && distance < reach;
}

bool handleContains(platform::Point handle, platform::Point at, double reach) {
    return isInReach(at.x, handle.x, reach) && isInReach(at.y, handle.y, reach);
}

} // namespace

int roundedCoordinate(double value) {
    return static_cast<int>(std::clamp(std::round(value),
                                       static_cast<double>(std::numeric_limits<int>::min()),
                                       static_cast<double>(std::numeric_limits<int>::max())));
}

void reportPointIndex() {
    core::Log::get()->Error("%s:%d Invalid point index", kShapeSource, kPointIndexLine);
}

platform::Point clampedTo(platform::Size area, platform::Point point) {
    return {clampedSide(point.x, area.width), clampedSide(point.y, area.height)};
}

platform::Point shapeCenter(std::span<const platform::Point> points) {
    std::int64_t x = 0;
    std::int64_t y = 0;
    for (const platform::Point& point : points) {
        x += point.x;
        y += point.y;
    }
    const auto count = static_cast<std::int64_t>(points.size());
    if (count >= kMinimumOutline) {
        x /= count;
        y /= count;
    }
    return {cutCoordinate(x), cutCoordinate(y)};
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

int hitPoint(std::span<const platform::Point> points, platform::Point at, double reach) {
    for (std::size_t index = 0; index < points.size(); ++index) {
        if (handleContains(points[index], at, reach)) {
            return static_cast<int>(index);
        }
    }
    return -1;
}

int hitHandle(std::span<const platform::Point> points, platform::Point center, platform::Point at,
              double reach) {
    const int point = hitPoint(points, at, reach);
    const int count = static_cast<int>(points.size());
    if (point != -1 || count < kMinimumOutline) {
        return point;
    }
    return handleContains(center, at, reach) ? count : -1;
}

} // namespace zone
