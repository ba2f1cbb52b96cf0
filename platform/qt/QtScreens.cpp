#include "platform/qt/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "platform/WindowScale.h"
#include "platform/qt/QtConvert.h"

namespace platform::qt {

namespace {

/// Screen pixels for one of Qt's. A Wayland compositor keeps both the screens and the popups in one
/// plane by itself.
double ratioOf(const QScreen& screen) {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"))
               ? 1
               : screen.devicePixelRatio();
}

/// By how many screen pixels a place that a window on it counts as `at` is outside.
double distanceTo(const QScreen& screen, Point at) {
    const auto beyond = [](int value, int first, int end) {
        return std::max({first - value, value - end + 1, 0});
    };
    const Rect area = fromQt(screen.geometry());
    return ratioOf(screen) *
           std::hypot(beyond(at.x, area.left, area.right), beyond(at.y, area.top, area.bottom));
}

} // namespace

double ratioBetween(const QScreen& from, const QScreen& to) {
    return ratioOf(to) / ratioOf(from);
}

Point onScreen(Point at, const QScreen& from, const QScreen& to) {
    const double ratio = ratioOf(from) / ratioOf(to);
    const auto counted = [&](int value, int start, int end) {
        return nearestPixel(end + (value - start) * ratio + (start - end) / ratioOf(to));
    };
    const Point start = fromQt(from.geometry().topLeft());
    const Point end = fromQt(to.geometry().topLeft());
    return {counted(at.x, start.x, end.x), counted(at.y, start.y, end.y)};
}

const QScreen& screenAt(Point at, const QScreen& from) {
    const QScreen* nearest = &from;
    double least = distanceTo(from, at);
    for (const QScreen* screen : QGuiApplication::screens()) {
        const double distance = distanceTo(*screen, onScreen(at, from, *screen));
        if (distance < least) {
            nearest = screen;
            least = distance;
        }
    }
    return *nearest;
}

Rect workAreaOf(const QScreen& screen, const QScreen& from) {
    const Rect area = fromQt(screen.availableGeometry());
    const Point topLeft = onScreen(area.topLeft(), screen, from);
    const Point end = onScreen({area.right, area.bottom}, screen, from);
    return {topLeft.x, topLeft.y, end.x, end.y};
}

} // namespace platform::qt
