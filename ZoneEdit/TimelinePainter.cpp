#include "ZoneEdit/TimelinePainter.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include "core/Text.h"
#include "platform/Color.h"
#include "platform/Path.h"
#include "toolkit/skin/RoundBox.h"
#include "zone/ShapeStretch.h"

namespace zoneedit {
namespace {

using platform::Color;
using platform::PointF;
using platform::Rect;

using toolkit::Tone;

constexpr Color kMarkedShare = 0x33; // alpha of what lies in a range
constexpr int kRulerFrom = 40;       // pixels of height
constexpr int kMargin = 4;           // beside the bar, for half a key
constexpr int kEdge = 2;             // thickness of a range's ends
constexpr int kLeastRun = 2;         // pixels of what is one frame long
constexpr double kApart = 6;         // pixels between two keys that are told apart
constexpr double kKeyReach = 5.0;
constexpr double kKeyInside = 3.2;
constexpr int kHeadReach = 7;
constexpr double kTickSteps[] = {1, 5, 10, 30, 60, 300}; // seconds
constexpr double kTickRoom = 60;
constexpr double kFineTickRoom = 5;
constexpr int kPartHeight = 4;

void fillDiamond(platform::Canvas& canvas, PointF middle, double reach, Color color) {
    const PointF corners[] = {{middle.x, middle.y - reach},
                              {middle.x + reach, middle.y},
                              {middle.x, middle.y + reach},
                              {middle.x - reach, middle.y}};
    platform::Path path;
    path.addPolygon(corners);
    canvas.fillPath(path, color);
}

Rect grip(const Rect& area, int left) {
    return Rect::at(left, area.top + area.height() / 2 - 6, 5, 12);
}

int rounded(double x) {
    return static_cast<int>(std::lround(std::clamp(x, -1e6, 1e6)));
}

/// "0:02".
std::u16string tickText(double seconds) {
    const long long whole = std::llround(seconds);
    const long long rest = whole % 60;
    return core::displayText(std::to_string(whole / 60) + (rest < 10 ? ":0" : ":") +
                             std::to_string(rest));
}

} // namespace

Rect barOf(const Rect& area) {
    const bool hasRuler = area.height() >= kRulerFrom;
    return Rect::at(area.left + kMargin, area.top + (hasRuler ? 18 : 6),
                    std::max(area.width() - 2 * kMargin, 1), hasRuler ? 18 : 12);
}

Rect beginGrip(const Rect& area, const TimeScale& scale, const FrameSpan& span) {
    return grip(area, rounded(scale.xOf(span.first)) - 5);
}

Rect endGrip(const Rect& area, const TimeScale& scale, const FrameSpan& span) {
    return grip(area, rounded(scale.xOf(span.last)) + 1);
}

Rect playhead(const Rect& area, const TimeScale& scale, int frame) {
    return Rect::at(rounded(scale.xOf(frame)) - kHeadReach, area.top, 2 * kHeadReach + 1,
                    area.height());
}

int TimelinePainter::x(double frame) const {
    return rounded(m_scale.xOf(frame));
}

Rect TimelinePainter::onBar(double first, double last) const {
    Rect box = m_bar;
    box.left = std::max(x(first), m_bar.left);
    box.right = std::min(std::max(x(last), x(first) + kLeastRun), m_bar.right);
    if (x(first) <= m_bar.right) { // the last frame has its place at the bar's end
        box.left = std::min(box.left, m_bar.right - kLeastRun);
    }
    return box;
}

void TimelinePainter::ruler(double framesPerSecond, platform::FontHandle font) const {
    if (m_area.height() < kRulerFrom || framesPerSecond <= 0) {
        return;
    }
    const double pixelsPerSecond = m_scale.pixelsPerFrame() * framesPerSecond;
    const auto* const fitting =
        std::find_if(std::begin(kTickSteps), std::end(kTickSteps),
                     [&](double step) { return step * pixelsPerSecond >= kTickRoom; });
    double step = fitting != std::end(kTickSteps) ? *fitting : 2 * *std::prev(fitting);
    while (step * pixelsPerSecond < kTickRoom) {
        step *= 2;
    }
    const double last = (m_scale.from() + m_scale.span()) / framesPerSecond;
    const bool hasFine = step / 5 * pixelsPerSecond >= kFineTickRoom;
    for (double at = std::floor(m_scale.from() / framesPerSecond / step) * step; at <= last;
         at += step) {
        const int left = x(at * framesPerSecond);
        if (left >= m_bar.left) {
            m_canvas.fillRect(Rect::at(left, m_area.top + 4, 1, 12), m_colors[Tone::edge]);
        }
        m_canvas.drawText(tickText(at), Rect::at(left + 4, m_area.top + 2, 60, 14), font,
                          m_colors[Tone::hint], platform::TextAlign::left);
        for (int fine = 1; hasFine && fine < 5 && at + fine * step / 5 <= last; ++fine) {
            const int place = x((at + fine * step / 5) * framesPerSecond);
            if (place >= m_bar.left) {
                m_canvas.fillRect(Rect::at(place, m_area.top + 11, 1, 5), m_colors[Tone::tick]);
            }
        }
    }
}

void TimelinePainter::runs(const TimelineMarks& marks) const {
    toolkit::fillRoundBox(m_canvas, m_bar, 2, m_colors[Tone::rest]);
    const double from = m_scale.from();
    auto run =
        std::partition_point(marks.active.begin(), marks.active.end(),
                             [from](const zone::FrameRange& range) { return range.end < from; });
    const Rect clip = m_canvas.clip();
    for (int done = m_bar.left; run != marks.active.end() && done < clip.right; ++run) {
        const Rect box = onBar(run->first, run->end);
        // Of runs closer than a pixel, the first stands for all.
        if (box.right > done && box.right > clip.left) {
            toolkit::fillRoundBox(m_canvas, box, 2, m_colors[Tone::run]);
            done = box.right;
        }
    }
}

void TimelinePainter::offered(const zone::FrameRange& frames) const {
    const Rect box = onBar(frames.first, frames.end - 1);
    if (frames.first >= frames.end || box.isEmpty()) {
        return;
    }
    const platform::ClipScope clip(m_canvas, box);
    constexpr int kPitch = 7;
    constexpr int kWidth = 4;
    const int height = box.height();
    platform::Path path;
    for (int left = x(frames.first) - height - kPitch; left < box.right; left += kPitch) {
        if (left + height + kWidth < box.left) {
            continue;
        }
        const auto at = static_cast<double>(left);
        const PointF corners[] = {{at, static_cast<double>(box.bottom)},
                                  {at + height, static_cast<double>(box.top)},
                                  {at + height + kWidth, static_cast<double>(box.top)},
                                  {at + kWidth, static_cast<double>(box.bottom)}};
        path.addPolygon(corners);
    }
    m_canvas.fillPath(path, m_colors[Tone::good]);
}

void TimelinePainter::range(const FrameSpan& span) const {
    const Rect box{x(span.first), m_area.top + 1, std::max(x(span.last), x(span.first) + kEdge),
                   m_area.bottom - 1};
    m_canvas.fillRect(box, (m_colors[Tone::accent] & 0xFFFFFFU) | kMarkedShare << 24U);
    m_canvas.fillRect({box.left, box.top, box.left + kEdge, box.bottom}, m_colors[Tone::accent]);
    m_canvas.fillRect({box.right - kEdge, box.top, box.right, box.bottom}, m_colors[Tone::accent]);
    toolkit::fillRoundBox(m_canvas, beginGrip(m_area, m_scale, span), 2, m_colors[Tone::accent]);
    toolkit::fillRoundBox(m_canvas, endGrip(m_area, m_scale, span), 2, m_colors[Tone::accent]);
}

void TimelinePainter::keys(const TimelineMarks& marks) const {
    const Rect clip = m_canvas.clip();
    const double reach = (kApart + kKeyReach) / m_scale.pixelsPerFrame();
    auto at = std::lower_bound(marks.keys.begin(), marks.keys.end(), m_scale.from() - reach);
    const double last = m_scale.from() + m_scale.span() + reach;
    while (at != marks.keys.end() && *at <= last) {
        const double first = m_scale.xOf(*at);
        double end = first;
        while (++at != marks.keys.end() && *at <= last && m_scale.xOf(*at) - end < kApart) {
            end = m_scale.xOf(*at);
        }
        if (end + kKeyReach < clip.left || first - kKeyReach > clip.right) {
            continue;
        }
        end > first ? keyBar(first, end) : key(first);
    }
}

void TimelinePainter::key(double middle) const {
    const PointF at{std::floor(middle + 0.5) + 0.5, m_bar.top + m_bar.height() / 2.0};
    fillDiamond(m_canvas, at, kKeyReach, m_colors[Tone::playhead]);
    fillDiamond(m_canvas, at, kKeyInside, m_colors[Tone::surface]);
}

void TimelinePainter::keyBar(double first, double last) const {
    const int middle = m_bar.top + m_bar.height() / 2;
    const Rect box{rounded(first) - 3, middle - 3, rounded(last) + 4, middle + 3};
    toolkit::fillRoundBox(m_canvas, box, 3, m_colors[Tone::playhead]);
    toolkit::fillRoundBox(m_canvas, {box.left + 1, box.top + 1, box.right - 1, box.bottom - 1}, 2,
                          m_colors[Tone::surface]);
}

void TimelinePainter::playhead(int frame) const {
    const int middle = x(frame);
    const int top = m_area.top + 1;
    const int bottom = m_area.bottom - 1;
    m_canvas.fillRect({middle - 2, top, middle + 3, bottom}, m_colors[Tone::surface]);
    m_canvas.fillRect({middle - 1, top, middle + 2, bottom}, m_colors[Tone::playhead]);
    const double left = middle - 6;
    const PointF corners[] = {{left, top + 0.0},
                              {left + 13, top + 0.0},
                              {left + 13, top + 3.0},
                              {left + 6.5, top + 9.0},
                              {left, top + 3.0}};
    platform::Path handle;
    handle.addPolygon(corners);
    m_canvas.fillPath(handle, m_colors[Tone::playhead]);
}

void TimelinePainter::part() const {
    if (m_scale.showsAll()) {
        return;
    }
    const double whole = std::max(m_scale.frames() - 1, 1);
    const int left = m_bar.left + rounded(m_scale.from() / whole * m_bar.width());
    const int width = std::max(rounded(m_scale.span() / whole * m_bar.width()), 2 * kPartHeight);
    const int top = m_area.bottom - 1 - kPartHeight;
    toolkit::fillRoundBox(m_canvas,
                          Rect::at(std::min(left, m_bar.right - width), top, width, kPartHeight), 2,
                          m_colors[Tone::edge]);
}

} // namespace zoneedit
