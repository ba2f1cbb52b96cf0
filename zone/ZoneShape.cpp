#include "zone/ZoneShape.h"

#include "zone/ShapeDrawing.h"
#include "zone/ShapeGeometry.h"
#include "zone/ShapeRecord.h"

namespace zone {

std::shared_ptr<ZoneShape> ZoneShape::createEmpty() {
    return std::make_shared<ZoneShape>();
}

std::shared_ptr<ZoneShape> ZoneShape::copyFrom(const ZoneShape& source) {
    std::shared_ptr<ZoneShape> copy = createEmpty();
    copy->active = source.active;
    copy->points = source.points;
    copy->updateRecordSize();
    return copy;
}

void ZoneShape::setPoint(int index, int x, int y) {
    if (index < -1 || index >= pointCount()) {
        reportPointIndex();
    } else if (index != -1) { // no point, yet not worth a message
        points[static_cast<std::size_t>(index)] = clampedToArea(x, y);
    }
}

bool ZoneShape::movePoint(int index, int x, int y, platform::Point& delta) {
    if (index != pointCount()) {
        setPoint(index, x, y);
        return false;
    }
    delta = {wrappedDifference(x, centerX), wrappedDifference(y, centerY)};
    shiftPoints(points, delta);
    return true;
}

int ZoneShape::insertPoint(int afterIndex, int x, int y) {
    const int at = insertPosition(afterIndex, points.size());
    if (at == -1) {
        return -1;
    }
    points.insert(points.begin() + at, platform::Point{x, y});
    updateRecordSize();
    return at;
}

void ZoneShape::removePoint(int index) {
    if (index < 0 || index >= pointCount()) {
        return;
    }
    points.erase(points.begin() + index);
    updateRecordSize();
}

int ZoneShape::hitTest(int x, int y) const {
    return hitHandle(points, {centerX, centerY}, {x, y});
}

void ZoneShape::draw(platform::Canvas& canvas, int originX, int originY, int selectedIndex) {
    const platform::Point center =
        drawShape(canvas, points, active, {originX, originY}, selectedIndex);
    centerX = center.x;
    centerY = center.y;
}

bool ZoneShape::write(core::File& file) const {
    const std::optional<Scale> scale = currentScale();
    if (!scale) {
        return false;
    }
    RecordWriter writer(file, *scale);
    writer.shape(active, points);
    return writer.finish();
}

bool ZoneShape::read(std::span<const std::uint8_t> bytes, std::size_t& consumed) {
    const std::optional<ShapeRecord> record = findShapeRecord(bytes);
    consumed = record ? record->size : 0;
    if (!record) {
        return false;
    }
    const std::optional<Scale> scale = currentScale();
    active = record->active;
    points.assign(record->pointCount(), {});
    if (scale) {
        convertPoints(*record, *scale, points.data());
    }
    updateRecordSize();
    return scale.has_value();
}

void ZoneShape::updateRecordSize() {
    recordSize = static_cast<std::uint32_t>(kShapeHeaderSize + kPointSize * points.size());
}

} // namespace zone
