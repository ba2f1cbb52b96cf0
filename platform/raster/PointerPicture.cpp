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
constexpr double kEdgeWidth = 3.5;

struct Drawing {
    int side = 16; ///< of the square that it is drawn in
    double inkWidth = 1.5;
    PointF hotSpot{8, 8};
    Path lines{};
    Path dots{}; ///< filled as well
};

void addLine(Path& path, std::initializer_list<PointF> points) {
    bool isFirst = true;
    for (const PointF& point : points) {
        isFirst ? path.moveTo(point) : path.lineTo(point);
        isFirst = false;
    }
}

void addDot(Path& path, PointF middle, double radius) {
    path.addRoundBox({middle.x - radius, middle.y - radius}, 2 * radius, 2 * radius, radius);
}

/// A point with an arrow to each side.
Drawing moveDrawing() {
    Drawing drawing{.side = 24, .inkWidth = 2, .hotSpot = {12, 12}};
    addDot(drawing.dots, drawing.hotSpot, 2.75);
    PointF way{0, 1};
    for (int side = 0; side < 4; ++side) {
        const auto at = [way](double along, double across) {
            return PointF{12 + way.x * along - way.y * across, 12 + way.y * along + way.x * across};
        };
        addLine(drawing.lines, {at(5, 0), at(9.8, 0)});
        addLine(drawing.lines, {at(7.4, 2.6), at(10, 0), at(7.4, -2.6)});
        way = {-way.y, way.x};
    }
    return drawing;
}

/// A corner of a shape, which is where it points at, and beside it what happens to it.
Drawing cornerDrawing() {
    Drawing drawing{.side = 24, .inkWidth = 2, .hotSpot = {8.5, 12.5}};
    addLine(drawing.lines, {{2, 22}, {8.5, 12.5}, {22, 19.5}});
    addDot(drawing.dots, drawing.hotSpot, 3.25);
    return drawing;
}

Drawing addPointDrawing() {
    Drawing drawing = cornerDrawing();
    addLine(drawing.lines, {{18, 1.5}, {18, 10.5}});
    addLine(drawing.lines, {{13.5, 6}, {22.5, 6}});
    return drawing;
}

Drawing deletePointDrawing() {
    Drawing drawing = cornerDrawing();
    addLine(drawing.lines, {{14.8, 2.8}, {21.2, 9.2}});
    addLine(drawing.lines, {{21.2, 2.8}, {14.8, 9.2}});
    return drawing;
}

/// An arrow to both sides.
Drawing scaleDrawing() {
    Drawing drawing;
    addLine(drawing.lines, {{3, 9.5}, {3, 13}, {6.5, 13}});
    addLine(drawing.lines, {{13, 6.5}, {13, 3}, {9.5, 3}});
    addLine(drawing.lines, {{3.5, 12.5}, {12.5, 3.5}});
    return drawing;
}

/// Most of a circle with an arrow head.
Drawing rotateDrawing() {
    constexpr double kRadius = 5.25;
    constexpr double kFrom = -0.45; // rad
    constexpr double kTo = 0.2 - 2 * std::numbers::pi;
    constexpr int kSteps = 32;
    Drawing drawing;
    addLine(drawing.lines, {{13, 3}, {13, 6.25}, {9.75, 6.25}});
    for (int step = 0; step <= kSteps; ++step) {
        const double angle = kFrom + (kTo - kFrom) * step / kSteps;
        const PointF at{8.05 + kRadius * std::cos(angle), 8.25 + kRadius * std::sin(angle)};
        step == 0 ? drawing.lines.moveTo(at) : drawing.lines.lineTo(at);
    }
    return drawing;
}

/// Its corners are points.
Drawing rectangleDrawing() {
    Drawing drawing;
    const PointF corners[]{{3.5, 4.5}, {12.5, 4.5}, {12.5, 11.5}, {3.5, 11.5}};
    drawing.lines.addPolygon(corners);
    for (const PointF& corner : corners) {
        addDot(drawing.dots, corner, 1);
    }
    return drawing;
}

/// An arrow away from a point.
Drawing linkDrawing() {
    Drawing drawing{.hotSpot = {3.5, 12.5}};
    addDot(drawing.dots, drawing.hotSpot, 2.25);
    addLine(drawing.lines, {drawing.hotSpot, {13, 3}});
    addLine(drawing.lines, {{7.5, 3}, {13, 3}, {13, 8.5}});
    return drawing;
}

Drawing drawingOf(PointerShape shape) {
    switch (shape) {
    case PointerShape::move:
        return moveDrawing();
    case PointerShape::addPoint:
        return addPointDrawing();
    case PointerShape::deletePoint:
        return deletePointDrawing();
    case PointerShape::scale:
        return scaleDrawing();
    case PointerShape::rotate:
        return rotateDrawing();
    case PointerShape::rectangle:
        return rectangleDrawing();
    case PointerShape::link:
        return linkDrawing();
    default:
        return {};
    }
}

} // namespace

PointerPicture pointerPicture(PointerShape shape, double scale) {
    const Drawing drawing = drawingOf(shape);
    if (drawing.lines.parts().empty()) {
        return {};
    }
    const int side = static_cast<int>(std::lround(kPointerSide * scale));
    const double enlarged = static_cast<double>(side) / drawing.side;
    PointerPicture picture{Bitmap({side, side}),
                           {static_cast<int>(drawing.hotSpot.x * enlarged),
                            static_cast<int>(drawing.hotSpot.y * enlarged)}};
    PathFiller filler;
    const auto fill = [&](const Path& path, Color color) {
        filler.fill(picture.bitmap, {0, 0, side, side}, path.scaled(enlarged), color);
    };
    for (const auto& [width, color] : {std::pair{kEdgeWidth, kEdge}, {drawing.inkWidth, kInk}}) {
        for (const Path* lines : {&drawing.lines, &drawing.dots}) {
            // Each line by itself: crossing strokes of one path may run round in opposite ways.
            for (const Path::Part& part : lines->parts()) {
                Path line;
                for (const PointF& point : part.points) {
                    line.lineTo(point);
                }
                if (part.isClosed) {
                    line.close();
                }
                fill(line.stroked(width), color);
            }
        }
        fill(drawing.dots, color);
    }
    return picture;
}

} // namespace platform::raster
