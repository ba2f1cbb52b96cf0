// Smooth shapes: the same pixels on every system, in one piece or by parts of the window.
#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Path.h"
#include "platform/raster/RasterCanvas.h"
#include "tests/support/gui/FakeGui.h"

using platform::Bitmap;
using platform::Path;
using platform::PointF;
using platform::Rect;

namespace {

constexpr platform::Size kSize{240, 120};
constexpr Rect kWhole{0, 0, kSize.width, kSize.height};
constexpr platform::Color kWhite = 0xFFFFFFFF;

Path polyline(const std::vector<PointF>& points, bool closed = false) {
    Path path;
    for (const PointF& point : points) {
        path.lineTo(point);
    }
    if (closed) {
        path.close();
    }
    return path;
}

Path roundBox(double x, double y, double width, double height, double radius) {
    Path path;
    path.addRoundBox({x, y}, width, height, radius);
    return path;
}

void drawScene(platform::Canvas& canvas) {
    canvas.fillRect(kWhole, 0xFFF4F5F7);
    Path curve;
    curve.moveTo({-20, 100});
    curve.curveTo({90, 150}, {20, -60}, {150, 30});
    Path head;
    head.addArrowHead({120, 10}, {150, 30}, 10, 8);
    canvas.fillPath(curve.stroked(2.25), 0xFF4060A0);
    canvas.fillPath(head, 0xFF4060A0);
    canvas.fillPath(polyline({{30, 8}, {48, 62}, {4, 28}, {57, 27}, {12, 62}}), 0x80C03020);
    const Path box = roundBox(160.3, 6.7, 74, 54, 7);
    canvas.fillPath(box, kWhite);
    canvas.fillPath(box.stroked(1.25), 0xFF303840);
    canvas.fillPath(polyline({{70, 100}, {100, 80}, {80, 112}, {75, 80}}, true).stroked(5),
                    0xFF207040);
    Bitmap still({29, 17});
    for (unsigned at = 0; at < 29 * 17; ++at) {
        still.row(0)[at] = platform::rgb(at % 29 * 8, at / 29 * 15, at / 4 % 2 == 0 ? 200 : 40);
    }
    still.row(8)[14] = 0;
    canvas.drawStill(still, {166, 12, 229, 55});
    canvas.drawStill(still, {150, 70, 160, 77});
    canvas.drawStill(still, {200, 70, 260, 130});
}

Bitmap filled(const Path& path) {
    Bitmap picture(kSize);
    test::NoText text;
    platform::raster::RasterCanvas(picture, text, kWhole).fillPath(path, kWhite);
    return picture;
}

/// What is covered, in pixels.
double areaOf(const Bitmap& picture) {
    double sum = 0;
    for (int y = 0; y < kSize.height; ++y) {
        for (int x = 0; x < kSize.width; ++x) {
            sum += (picture.at(x, y) >> 24U) / 255.0;
        }
    }
    return sum;
}

TEST(Paths, HaveTheSamePixelsEverywhereAndInEveryClip) {
    for (const int tile : {1000, 64, 37, 5}) {
        Bitmap picture(kSize);
        test::NoText text;
        for (int y = 0; y < kSize.height; y += tile) {
            for (int x = 0; x < kSize.width; x += tile) {
                platform::raster::RasterCanvas canvas(picture, text, Rect::at(x, y, tile, tile));
                drawScene(canvas);
            }
        }
        std::uint64_t hash = 14695981039346656037U;
        for (int y = 0; y < kSize.height; ++y) {
            for (int x = 0; x < kSize.width; ++x) {
                hash = (hash ^ picture.at(x, y)) * 1099511628211U;
            }
        }
        EXPECT_EQ(hash, 14552853434750983981U) << tile;
    }
}

TEST(Paths, StrokesCoverTheirWidthAlongTheWholeWay) {
    const struct {
        const char* what;
        Path path;
        double width, area;
    } cases[] = {
        {"a line", polyline({{10, 20}, {90, 80}}), 3, 300},
        {"pointed corners", polyline({{20, 20}, {80, 20}, {80, 80}, {20, 80}}, true), 4, 960},
        {"a circle", roundBox(20, 20, 60, 60, 99), 4, 753.98},
        {"there and back", polyline({{10, 50}, {90, 50}, {10, 50}}), 6, 480},
        {"a closed flat one", polyline({{10, 50}, {90, 50}, {50, 50}}, true), 6, 480},
        {"a cut corner", polyline({{10, 50}, {90, 50}, {20, 50.001}}), 6, 480},
        {"a point", polyline({{10, 50}, {10, 50}}), 6, 0},
        {"no width", polyline({{10, 50}, {20, 50}}), -1, 0},
    };
    for (const auto& [what, path, width, area] : cases) {
        EXPECT_NEAR(areaOf(filled(path.stroked(width))), area, area / 200) << what;
    }
    EXPECT_NEAR(areaOf(filled(roundBox(10, 10, 80, 50, 8))), 4000 - (4 - 3.1416) * 64, 3);
}

TEST(Paths, StayInsideThePictureWhateverTheirNumbers) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    constexpr double kFar[] = {1e5, 1e9, 1e300, std::numeric_limits<double>::infinity()};
    for (const double far : kFar) {
        EXPECT_EQ(areaOf(filled(polyline({{-far, -far}, {far, -far}, {0, far}}))), 240 * 120);
        EXPECT_EQ(areaOf(filled(polyline({{far, 0}, {2 * far, 0}, {far, 99}}))), 0);
        Path path = polyline({{kNone, 5}, {far, kNone}, {-far, far}});
        path.curveTo({far, 0}, {kNone, far}, {0, -far});
        path.addRoundBox({-far, -far}, far * 2, far * 2, kNone);
        path.addArrowHead({far, far}, {0, kNone}, far, 1);
        (void)filled(path);
        (void)filled(path.stroked(far));
        (void)filled(path.stroked(3));
    }
    (void)filled(Path());
}

TEST(Stills, OfOneColourKeepItAtEverySize) {
    for (const platform::Size size : {platform::Size{1, 1}, {7, 3}, {401, 300}, {5000, 2}}) {
        Bitmap still(size);
        for (int y = 0; y < size.height; ++y) {
            std::fill_n(still.row(y), size.width, 0xFF12FE07U);
        }
        for (const Rect& place : {Rect{3, 4, 5, 6}, {-90, 10, 300, 11}, {0, 0, 240, 120}}) {
            Bitmap picture(kSize);
            test::NoText text;
            platform::raster::RasterCanvas(picture, text, kWhole).drawStill(still, place);
            const Rect visible = place.intersected(kWhole);
            EXPECT_EQ(areaOf(picture), visible.width() * visible.height());
            EXPECT_EQ(picture.at(visible.right - 1, visible.top), 0xFF12FE07U);
        }
    }
}

} // namespace
