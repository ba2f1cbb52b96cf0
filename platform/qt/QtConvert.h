// Rectangles and pictures between our types and Qt's.
#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QRegion>

#include "platform/Geometry.h"
#include "platform/raster/PixelView.h"

namespace platform::qt {

[[nodiscard]] inline QRect toQt(const Rect& rect) {
    return {rect.left, rect.top, rect.width(), rect.height()};
}
[[nodiscard]] inline Rect fromQt(const QRect& rect) {
    return Rect::at(rect.x(), rect.y(), rect.width(), rect.height());
}
[[nodiscard]] inline QPoint toQt(Point point) {
    return {point.x, point.y};
}
[[nodiscard]] inline Point fromQt(const QPoint& point) {
    return {point.x(), point.y()};
}

/// All of a window of `size` but for what lies outside of corners rounded by `radius`: a pixel
/// belongs to it when its centre does.
[[nodiscard]] QRegion roundedRegion(Size size, int radius);

/// An image that reads and writes the pixels themselves, which must outlive it.
[[nodiscard]] inline QImage imageOver(raster::PixelView pixels) {
    return {reinterpret_cast<uchar*>(pixels.row(0)), pixels.size().width, pixels.size().height,
            pixels.size().width * 4, QImage::Format_ARGB32_Premultiplied};
}

} // namespace platform::qt
