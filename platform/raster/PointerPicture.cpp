#include "platform/raster/PointerPicture.h"

#include <cmath>
#include <initializer_list>
#include <numbers>
#include <utility>

#include "platform/Color.h"
#include "platform/Path.h"
#include "platform/raster/PathFiller.h"

namespace platform::raster {
namespace {

constexpr Color kInk = 0xFF14191F;
constexpr Color kEdge = 0xFFFFFFFF;
constexpr double kInkWidth = 1.5;
constexpr double kEdgeWidth = 3.5;
/// The side of what is drawn here.
constexpr int kGrid = 16;

void addLine(Path& path, std::initializer_list<PointF> points) {
    bool isFirst = true;
    for (const PointF& point : points) {
        isFirst ? path.moveTo(point) : path.lineTo(point);
        isFirst = false;
    }
}

/// An arrow to both sides.
Path scaleLines() {
    Path path;
    addLine(path, {{3, 9.5}, {3, 13}, {6.5, 13}});
    addLine(path, {{13, 6.5}, {13, 3}, {9.5, 3}});
    addLine(path, {{3.5, 12.5}, {12.5, 3.5}});
    return path;
}

/// Most of a circle with an arrow head.
Path rotateLines() {
    constexpr double kRadius = 5.25;
    constexpr double kFrom = -0.45; // rad
    constexpr double kTo = 0.2 - 2 * std::numbers::pi;
    constexpr int kSteps = 32;
    Path path;
    addLine(path, {{13, 3}, {13, 6.25}, {9.75, 6.25}});
    for (int step = 0; step <= kSteps; ++step) {
        const double angle = kFrom + (kTo - kFrom) * step / kSteps;
        const PointF at{8.05 + kRadius * std::cos(angle), 8.25 + kRadius * std::sin(angle)};
        step == 0 ? path.moveTo(at) : path.lineTo(at);
    }
    return path;
}

/// Its corners are points.
Path rectangleLines() {
    Path path;
    const PointF corners[]{{3.5, 4.5}, {12.5, 4.5}, {12.5, 11.5}, {3.5, 11.5}};
    path.addPolygon(corners);
    for (const PointF& corner : corners) {
        path.addRoundBox({corner.x - 1, corner.y - 1}, 2, 2, 1);
    }
    return path;
}

Path linesOf(PointerShape shape) {
    switch (shape) {
    case PointerShape::scale:
        return scaleLines();
    case PointerShape::rotate:
        return rotateLines();
    case PointerShape::rectangle:
        return rectangleLines();
    default:
        return {};
    }
}

} // namespace

Bitmap pointerPicture(PointerShape shape, double scale) {
    const Path lines = linesOf(shape);
    if (lines.parts().empty()) {
        return {};
    }
    const int side = static_cast<int>(std::lround(kPointerSide * scale));
    Bitmap picture({side, side});
    PathFiller filler;
    const double enlarged = static_cast<double>(side) / kGrid;
    for (const auto& [width, color] : {std::pair{kEdgeWidth, kEdge}, {kInkWidth, kInk}}) {
        // Each line by itself: crossing strokes of one path may run round in opposite ways.
        for (const Path::Part& part : lines.parts()) {
            Path line;
            for (const PointF& point : part.points) {
                line.lineTo(point);
            }
            if (part.isClosed) {
                line.close();
            }
            filler.fill(picture, {0, 0, side, side}, line.stroked(width).scaled(enlarged), color);
        }
    }
    return picture;
}

} // namespace platform::raster
