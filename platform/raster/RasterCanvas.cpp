#include "platform/raster/RasterCanvas.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/Bitmap.h"
#include "platform/raster/Blend.h"
#include "platform/raster/FrameScaler.h"
#include "platform/raster/Shapes.h"
#include "platform/raster/StillScaler.h"

namespace platform::raster {

namespace {

constexpr int kMaxEllipseSide = 32767;
constexpr int kOutsideBitmap = -1;

Rect boundsOf(PixelView pixels) {
    return {0, 0, pixels.size().width, pixels.size().height};
}

/// An empty intersection may be inside out; clips are kept in order so that loops stay simple.
Rect orderly(const Rect& rect) {
    return rect.isEmpty() ? Rect{rect.left, rect.top, rect.left, rect.top} : rect;
}

std::int64_t lengthOf(int from, int to) {
    return static_cast<std::int64_t>(to) - from;
}

/// For each target coordinate in [visibleFrom, visibleTo) the source coordinate it shows, or
/// kOutsideBitmap.
std::vector<int> sourceCoordinates(int sourceFrom, int sourceTo, int limit, int targetFrom,
                                   int targetTo, int visibleFrom, int visibleTo) {
    std::vector<int> result;
    result.reserve(static_cast<std::size_t>(visibleTo - visibleFrom));
    const int sourceCount = static_cast<int>(lengthOf(sourceFrom, sourceTo));
    const int targetCount = static_cast<int>(lengthOf(targetFrom, targetTo));
    for (int at = visibleFrom; at < visibleTo; ++at) {
        const int from = sourceFrom + nearestIndex(at - targetFrom, sourceCount, targetCount);
        result.push_back(from >= 0 && from < limit ? from : kOutsideBitmap);
    }
    return result;
}

} // namespace

RasterCanvas::RasterCanvas(PixelView target, TextPainter& textPainter, const Rect& clip)
    : m_target(target),
      m_textPainter(textPainter), m_clips{orderly(clip.intersected(boundsOf(target)))} {}

void RasterCanvas::pushClip(const Rect& rect) {
    m_clips.push_back(orderly(clip().intersected(rect)));
}

void RasterCanvas::popClip() {
    if (m_clips.size() > 1) {
        m_clips.pop_back();
    }
}

void RasterCanvas::fillSpan(int left, int right, int y, Color color) {
    const Rect& bounds = m_clips.back();
    if (y < bounds.top || y >= bounds.bottom) {
        return;
    }
    const int from = std::max(left, bounds.left);
    const int to = std::min(right, bounds.right);
    if (from >= to) {
        return;
    }
    std::uint32_t* row = m_target.row(y);
    const std::uint32_t pixel = premultiply(color);
    if (alphaOf(color) == 255) {
        std::fill(row + from, row + to, pixel);
        return;
    }
    for (int x = from; x < to; ++x) {
        row[x] = blendPixel(pixel, row[x]);
    }
}

void RasterCanvas::fillRect(const Rect& rect, Color color) {
    const Rect visible = rect.intersected(clip());
    if (alphaOf(color) == 0) {
        return;
    }
    for (int y = visible.top; y < visible.bottom; ++y) {
        fillSpan(visible.left, visible.right, y, color);
    }
}

void RasterCanvas::drawBitmap(const Bitmap& bitmap, const Rect& source, const Rect& target) {
    const Rect visible = target.intersected(clip());
    if (visible.isEmpty() || source.isEmpty() || bitmap.isEmpty()) {
        return;
    }
    const std::vector<int> columns =
        sourceCoordinates(source.left, source.right, bitmap.size().width, target.left, target.right,
                          visible.left, visible.right);
    const std::vector<int> rows =
        sourceCoordinates(source.top, source.bottom, bitmap.size().height, target.top,
                          target.bottom, visible.top, visible.bottom);
    for (int y = visible.top; y < visible.bottom; ++y) {
        const int fromRow = rows[static_cast<std::size_t>(y - visible.top)];
        if (fromRow == kOutsideBitmap) {
            continue;
        }
        const std::uint32_t* from = bitmap.row(fromRow);
        std::uint32_t* to = m_target.row(y) + visible.left;
        for (const int column : columns) {
            if (column != kOutsideBitmap) {
                *to = blendPixel(from[column], *to);
            }
            ++to;
        }
    }
}

void RasterCanvas::drawFrame(const FrameBuffer& frame, const Rect& target) {
    scaleFrame(frame, m_target, target, clip());
}

void RasterCanvas::drawLine(Point from, Point to, Color color) {
    const std::uint32_t pixel = premultiply(color);
    walkLine(from, to, clip(), [&](Point at) {
        std::uint32_t& under = m_target.row(at.y)[at.x];
        under = blendPixel(pixel, under);
    });
}

void RasterCanvas::drawEllipse(const Rect& box, Color outline, Color fill) {
    const Rect visible = box.intersected(clip());
    if (visible.isEmpty() || lengthOf(box.left, box.right) > kMaxEllipseSide ||
        lengthOf(box.top, box.bottom) > kMaxEllipseSide) {
        return;
    }
    for (int y = visible.top; y < visible.bottom; ++y) {
        const EllipseRow row = ellipseRow(box.size(), y - box.top);
        fillSpan(box.left + row.left, box.left + row.innerLeft, y, outline);
        fillSpan(box.left + row.innerLeft, box.left + row.innerRight, y, fill);
        fillSpan(box.left + row.innerRight, box.left + row.right, y, outline);
    }
}

void RasterCanvas::fillPath(const Path& path, Color color) {
    m_pathFiller.fill(m_target, clip(), path, color);
}

void RasterCanvas::drawStill(const Bitmap& still, const Rect& target) {
    raster::drawStill(still, m_target, target, clip());
}

void RasterCanvas::drawMask(const Bitmap& mask, const Rect& source, const Rect& target,
                            Color color) {
    const Rect part = source.intersected({0, 0, mask.size().width, mask.size().height});
    if (part.isEmpty() || part != source || target.intersected(clip()).isEmpty()) {
        return;
    }
    Bitmap colored(part.size());
    const std::uint32_t pixel = premultiply(color);
    for (int y = 0; y < part.height(); ++y) {
        const std::uint32_t* from = mask.row(part.top + y) + part.left;
        std::transform(from, from + part.width(), colored.row(y),
                       [pixel](std::uint32_t cover) { return scalePixel(pixel, cover >> 24U); });
    }
    if (part.size() == target.size()) {
        drawBitmap(colored, {0, 0, part.width(), part.height()}, target);
    } else {
        raster::drawStill(colored, m_target, target, clip());
    }
}

void RasterCanvas::drawText(std::u16string_view text, const Rect& box, FontHandle font, Color color,
                            TextAlign align) {
    const Rect visible = box.intersected(clip());
    if (visible.isEmpty() || text.empty()) {
        return;
    }
    m_textPainter.drawText(m_target, visible, text, box, font, color, align);
}

} // namespace platform::raster
