#include "platform/raster/RasterCanvas.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/Bitmap.h"
#include "platform/Path.h"
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

/// Whether a part is of one colour, as the middle of a frame is; not asked of large parts.
bool isPlain(const Bitmap& bitmap, const Rect& part) {
    constexpr std::int64_t kMostAsked = 256;
    const Rect bounds{0, 0, bitmap.size().width, bitmap.size().height};
    if (part.intersected(bounds) != part ||
        std::int64_t{part.width()} * part.height() > kMostAsked) {
        return false;
    }
    const std::uint32_t first = bitmap.row(part.top)[part.left];
    for (int y = part.top; y < part.bottom; ++y) {
        const std::uint32_t* row = bitmap.row(y);
        if (!std::all_of(row + part.left, row + part.right,
                         [first](std::uint32_t pixel) { return pixel == first; })) {
            return false;
        }
    }
    return true;
}

} // namespace

RasterCanvas::RasterCanvas(PixelView target, TextPainter& textPainter, const Rect& clip,
                           const PixelScale& scale)
    : m_target(target), m_textPainter(textPainter),
      m_scale(scale), m_clips{orderly(scale.isOne() ? clip.intersected(boundsOf(target)) : clip)},
      m_deviceClips{orderly(scale.rect(m_clips.back()).intersected(boundsOf(target)))} {}

void RasterCanvas::pushClip(const Rect& rect) {
    m_clips.push_back(orderly(clip().intersected(rect)));
    m_deviceClips.push_back(orderly(deviceClip().intersected(m_scale.rect(m_clips.back()))));
}

void RasterCanvas::popClip() {
    if (m_clips.size() > 1) {
        m_clips.pop_back();
        m_deviceClips.pop_back();
    }
}

void RasterCanvas::fillSpan(int left, int right, int y, Color color) {
    const Rect& bounds = deviceClip();
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

void RasterCanvas::fill(const Rect& rect, Color color) {
    fillPlain(rect.intersected(deviceClip()), premultiply(color));
}

void RasterCanvas::fillRect(const Rect& rect, Color color) {
    constexpr int kThin = 2;
    Rect place = m_scale.rect(rect);
    if (rect.width() <= kThin && !rect.isEmpty()) {
        place.right = place.left + m_scale.line(rect.width());
    }
    if (rect.height() <= kThin && !rect.isEmpty()) {
        place.bottom = place.top + m_scale.line(rect.height());
    }
    fill(place, color);
}

void RasterCanvas::fillFrame(const Rect& rect, const Rect& widths, Color color) {
    const Rect r = m_scale.rect(rect);
    const auto line = [this](int width) { return width > 0 ? m_scale.line(width) : 0; };
    const int top = r.top + line(widths.top);
    const int bottom = r.bottom - line(widths.bottom);
    fill({r.left, r.top, r.right, top}, color);
    fill({r.left, bottom, r.right, r.bottom}, color);
    fill({r.left, top, r.left + line(widths.left), bottom}, color);
    fill({r.right - line(widths.right), top, r.right, bottom}, color);
}

void RasterCanvas::drawBitmap(const Bitmap& bitmap, const Rect& source, const Rect& place) {
    const Rect target = m_scale.rect(place);
    const Rect visible = target.intersected(deviceClip());
    if (visible.isEmpty() || source.isEmpty() || bitmap.isEmpty()) {
        return;
    }
    if (isPlain(bitmap, source)) {
        fillPlain(visible, bitmap.row(source.top)[source.left]);
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

void RasterCanvas::fillPlain(const Rect& visible, std::uint32_t pixel) {
    if (pixel == 0 || visible.isEmpty()) {
        return;
    }
    for (int y = visible.top; y < visible.bottom; ++y) {
        std::uint32_t* begin = m_target.row(y) + visible.left;
        std::uint32_t* end = begin + visible.width();
        if (pixel >> 24U == 255) {
            std::fill(begin, end, pixel);
        } else {
            std::transform(begin, end, begin,
                           [pixel](std::uint32_t under) { return blendPixel(pixel, under); });
        }
    }
}

void RasterCanvas::drawFrame(const FrameBuffer& frame, const Rect& target) {
    scaleFrame(frame, m_target, m_scale.rect(target), deviceClip());
}

void RasterCanvas::drawFrameSmoothly(const FrameBuffer& frame, const Rect& target) {
    raster::drawFrameSmoothly(frame, m_target, m_scale.rect(target), deviceClip());
}

void RasterCanvas::drawLine(Point from, Point to, Color color) {
    const std::uint32_t pixel = premultiply(color);
    if (const int width = m_scale.line(1); width > 1) {
        drawThickLine({m_scale.x(from.x), m_scale.y(from.y)}, {m_scale.x(to.x), m_scale.y(to.y)},
                      width, pixel);
        return;
    }
    const Point begin = m_scale.isOne() ? from : Point{m_scale.x(from.x), m_scale.y(from.y)};
    const Point end = m_scale.isOne() ? to : Point{m_scale.x(to.x), m_scale.y(to.y)};
    walkLine(begin, end, deviceClip(), [&](Point at) {
        std::uint32_t& under = m_target.row(at.y)[at.x];
        under = blendPixel(pixel, under);
    });
}

/// A square for each pixel of the thin line.
void RasterCanvas::drawThickLine(Point from, Point to, int width, std::uint32_t pixel) {
    const Rect& bounds = deviceClip();
    const Rect around{bounds.left - width, bounds.top - width, bounds.right, bounds.bottom};
    walkLine(from, to, around, [&](Point at) {
        const Rect square = Rect::at(at.x, at.y, width, width).intersected(bounds);
        for (int y = square.top; y < square.bottom; ++y) {
            for (int x = square.left; x < square.right; ++x) {
                m_target.row(y)[x] = blendPixel(pixel, m_target.row(y)[x]);
            }
        }
    });
}

void RasterCanvas::drawEllipse(const Rect& box, Color outline, Color fill) {
    fillEllipse(m_scale.rect(box), m_scale.line(1), outline, fill);
}

void RasterCanvas::fillEllipse(const Rect& box, int outlineWidth, Color outline, Color fill) {
    const Rect visible = box.intersected(deviceClip());
    if (visible.isEmpty() || lengthOf(box.left, box.right) > kMaxEllipseSide ||
        lengthOf(box.top, box.bottom) > kMaxEllipseSide) {
        return;
    }
    const Color first = outlineWidth > 1 ? outline : fill; // a thick outline is a disc in a disc
    for (int y = visible.top; y < visible.bottom; ++y) {
        const EllipseRow row = ellipseRow(box.size(), y - box.top);
        fillSpan(box.left + row.left, box.left + row.innerLeft, y, outline);
        fillSpan(box.left + row.innerLeft, box.left + row.innerRight, y, first);
        fillSpan(box.left + row.innerRight, box.left + row.right, y, outline);
    }
    if (outlineWidth > 1) {
        fillEllipse({box.left + outlineWidth, box.top + outlineWidth, box.right - outlineWidth,
                     box.bottom - outlineWidth},
                    1, fill, fill);
    }
}

void RasterCanvas::fillPath(const Path& path, Color color) {
    m_pathFiller.fill(m_target, deviceClip(), m_scale.isOne() ? path : path.scaled(scale()), color);
}

void RasterCanvas::drawStill(const Bitmap& still, const Rect& target) {
    raster::drawStill(still, m_target, m_scale.rect(target), deviceClip());
}

void RasterCanvas::drawMask(const Bitmap& mask, const Rect& source, const Rect& place,
                            Color color) {
    const Rect target = m_scale.rect(place);
    const Rect part = source.intersected({0, 0, mask.size().width, mask.size().height});
    if (part.isEmpty() || part != source || target.intersected(deviceClip()).isEmpty()) {
        return;
    }
    const std::uint32_t pixel = premultiply(color);
    // The edges of one that fits may round to a pixel more or less, which must not blur it.
    const auto isNear = [](int first, int second) { return std::abs(first - second) <= 1; };
    if (isNear(part.width(), target.width()) && isNear(part.height(), target.height())) {
        const Rect shown = Rect::at(target.left, target.top, part.width(), part.height())
                               .intersected(deviceClip());
        for (int y = shown.top; y < shown.bottom; ++y) {
            const std::uint32_t* from = mask.row(part.top + y - target.top) + part.left;
            for (int x = shown.left; x < shown.right; ++x) {
                std::uint32_t& under = m_target.row(y)[x];
                under = blendPixel(scalePixel(pixel, from[x - target.left] >> 24U), under);
            }
        }
        return;
    }
    Bitmap colored(part.size());
    for (int y = 0; y < part.height(); ++y) {
        const std::uint32_t* from = mask.row(part.top + y) + part.left;
        std::transform(from, from + part.width(), colored.row(y),
                       [pixel](std::uint32_t cover) { return scalePixel(pixel, cover >> 24U); });
    }
    raster::drawStill(colored, m_target, target, deviceClip());
}

void RasterCanvas::drawText(std::u16string_view text, const Rect& box, FontHandle font, Color color,
                            TextAlign align) {
    const Rect visible = m_scale.rect(box).intersected(deviceClip());
    if (visible.isEmpty() || text.empty()) {
        return;
    }
    m_textPainter.drawText(m_target, m_scale, visible, text, box, font, color, align);
}

} // namespace platform::raster
